#!/usr/bin/env python3
"""Makes the tables of the detector from the texts that detect_texts.py collected.

    detect_models.py TEXTS OUT

writes detect_letters.inc, detect_marks.inc, detect_languages.inc and
detect_ideographs.inc into OUT. genutil/mbutil/detect_model.h describes the tables.

A cost is -log2 of a probability in sixths of a bit. Tables are strings of printable characters, one
for each value from 0 to 91.
"""
import collections
import math
import sys
import unicodedata

UNITS = 6
TOP = 91
FIRST = 35
SLOTS = 1792
ZERO = 46  # the difference 0 in a table of trigrams

LATIN = ("en de fr es pt it nl sv da nb nn fi is ca gl eu ga cy af id sq eo "
         "pl cs sk hu ro hr sl et lv lt tr vi").split()
OTHER = {"Cyrillic": "ru uk bg be mk sr".split(), "Greek": ["el"], "Hebrew": ["he"],
         "Arabic": ["ar", "fa"], "Thai": ["th"]}
SCRIPTS = ["Latin", "Cyrillic", "Greek", "Hebrew", "Arabic", "Thai"]
CODECS = ("cp1250 cp1251 cp1252 cp1253 cp1254 cp1255 cp1256 cp1257 cp1258 cp874 iso8859_1 iso8859_2 "
          "iso8859_3 iso8859_4 iso8859_5 iso8859_6 iso8859_7 iso8859_8 iso8859_9 iso8859_10 iso8859_11 iso8859_13 "
          "iso8859_14 iso8859_15 iso8859_16 koi8_r koi8_u cp437 cp850 cp852 cp866").split()
# Letters that stand for one another.
SAME = {0x0219: 0x015F, 0x021B: 0x0163}
TONES = {"\u0300", "\u0301", "\u0303", "\u0309", "\u0323"}
MARKS = 64
FOREIGN = 5  # bits that tell the letters apart which share the symbol for foreign ones
OWN_TOP = 78  # highest cost of a letter of the language's own
MIXED = 10  # least cost in bits of two scripts in a word
# Marks that books and letters use more often than manual pages and messages, in any language.
# Their costs are the same in all, as they also stand in words and names of other languages.
TYPOGRAPHIC = "\u00a0\u00a7\u00a9\u00ab\u00b0\u00b7\u00bb\u2013\u2014\u2018\u2019\u201c\u201d\u201e\u2022\u2026\u20ac"


def literal(values):
    """Returns lines of a C++ string literal."""
    text = "".join(chr(FIRST + v) for v in values)
    lines = []
    for i in range(0, len(text), 100):
        line = text[i:i + 100].replace("\\", "\\\\").replace("?", "\\?")
        lines.append(f'    "{line}"')
    return "\n".join(lines)


def cost(probability):
    return min(TOP, max(0, round(-math.log2(probability) * UNITS)))


def script_of(c):
    if c in TONES:
        return "Latin"
    name = unicodedata.name(c, "")
    for script in SCRIPTS:
        if name.startswith(script.upper() + " "):
            return script
    return None


def is_letter(c):
    return c not in "\u00aa\u00ba\u00b5" and (unicodedata.category(c)[0] in "LM") and script_of(c) is not None


def all_characters():
    found = set()
    for codec in CODECS:
        for byte in range(0x80, 0x100):
            try:
                found.add(bytes([byte]).decode(codec))
            except UnicodeDecodeError:
                pass
    return found


def make_letters():
    """Returns the rows of letters {character: (script, id, is upper)}. An id is unique in its script."""
    ids = {script: {} for script in SCRIPTS}
    ids["Latin"] = {chr(c): c - 96 for c in range(97, 123)}
    rows = {}
    for c in sorted(all_characters() | {chr(c) for c in range(65, 123) if chr(c).isalpha()}):
        if not is_letter(c):
            continue
        lower = c.lower() if len(c.lower()) == 1 else "i"
        lower = chr(SAME.get(ord(lower), ord(lower)))
        script = script_of(c)
        known = ids[script]
        first = 1 if script == "Latin" else 2  # 1 is any Latin letter
        if lower not in known:
            known[lower] = len(known) + first
        rows[c] = (script, known[lower], c != lower and c.lower() != c)
    return rows, ids


def fold(text, language):
    text = text.lower().replace("\u0130", "i").replace("\u0307", "")
    text = text.translate(SAME)
    if language in ("fa", "ar"):
        text = text.replace("\u06cc", "\u064a").replace("\u200c", " ")
    if language == "vi":
        half = len(text) // 2
        text = text[:half] + spread(text[half:])
    return text


def spread(text):
    """Writes the tones of Vietnamese as characters of their own, as code page 1258 has them."""
    out = []
    for c in text:
        parts = unicodedata.normalize("NFD", c)
        tones = [p for p in parts if p in TONES]
        rest = unicodedata.normalize("NFC", "".join(p for p in parts if p not in TONES))
        out.append(rest + "".join(tones))
    return "".join(out)


class Language:
    def __init__(self, name, script, text, rows, ids):
        self.name, self.script = name, script
        counts = collections.Counter(text)
        own = {}  # id: local symbol
        first = 2 if script != "Latin" else 1
        if script == "Latin":
            own = {i: i for i in range(1, 27)}
        letters = sum(n for c, n in counts.items() if c in rows and rows[c][0] == script)
        for c, n in counts.most_common():
            row = rows.get(c)
            if row and row[0] == script and row[1] not in own and n > letters / 30000:
                own[row[1]] = len(own) + first
        self.symbols = len(own) + first + 1
        foreign = self.symbols - 1
        self.map = [0] * (max(ids[script].values()) + 1)
        for i in range(1, len(self.map)):
            self.map[i] = own.get(i, foreign)
        if script != "Latin":
            self.map[1] = 1
        table = {}
        for c in counts:
            row = rows.get(c)
            value = 0
            if row and row[0] == script:
                value = own.get(row[1], foreign)
            elif script != "Latin" and row and row[0] == "Latin":
                value = 1
            elif unicodedata.category(c)[0] in "LM":
                value = foreign
            table[ord(c)] = chr(value)
        self.train(text.translate(table))
        self.marks_from(counts)

    def plain(self, *symbols):
        """Returns true if the symbols also occur between texts of other languages."""
        return all(s == 0 or (s == 1 and self.script != "Latin") for s in symbols)

    def plain_cost(self, a, b):
        """Returns what a pair costs on the average in the languages of which it is a pair of letters."""
        return 0 if a == b else 4 * UNITS if b else 5 * UNITS // 2

    def mixed(self, a, b):
        """Returns true if a letter of the script touches a Latin one. Messages mention such words less
        than they contain placeholders, which were removed."""
        return self.script != "Latin" and (a == 1) != (b == 1) and a != 0 and b != 0

    def train(self, coded):
        size = self.symbols
        coded = "\0" + coded + "\0"
        triples = collections.Counter(zip(coded, coded[1:], coded[2:]))
        pairs = collections.Counter(zip(coded, coded[1:]))
        n = [[0.0] * size for _ in range(size)]
        for (a, b), count in pairs.items():
            if not self.plain(ord(a), ord(b)):
                n[ord(a)][ord(b)] += count
        single = [sum(n[a][b] for a in range(size)) + 0.5 for b in range(size)]
        total = sum(single)
        single[-1] *= 2 ** -FOREIGN
        self.single = [cost(v / total) for v in single]
        self.pairs = []
        p = [[0.0] * size for _ in range(size)]
        for a in range(size):
            row = sum(n[a])
            for b in range(size):
                p[a][b] = (n[a][b] + 8 * single[b] / total) / (row + 8)
                if b == size - 1:
                    p[a][b] = n[a][b] / (row + 8) * 2 ** -FOREIGN + 8 * single[b] / total / (row + 8)
                if self.mixed(a, b):
                    p[a][b] = min(p[a][b], 2 ** -MIXED)
                most = TOP if b == size - 1 else OWN_TOP
                self.pairs.append(self.plain_cost(a, b) if self.plain(a, b) else min(most, cost(p[a][b])))
        self.triples(triples, pairs, p)

    def triples(self, triples, pairs, p):
        size = self.symbols
        gains = []
        seen = set()
        for (a, b, c), count in triples.items():
            x, y, z = ord(a), ord(b), ord(c)
            seen.add((x, y, z))
            if y == 0 or self.plain(x, y, z) or self.plain(y, z):
                continue
            probability = (count + 4 * p[y][z]) / (pairs[a, b] + 4)
            gains.append(self.gain(x, y, z, probability, p, count))
        for (a, b), count in pairs.items():
            x, y = ord(a), ord(b)
            if y == 0 or count < 200:
                continue
            for z in range(size):
                if (x, y, z) not in seen and not self.plain(y, z) and count * p[y][z] > 20:
                    gains.append(self.gain(x, y, z, 4 * p[y][z] / (count + 4), p, count * p[y][z]))
        gains.sort(reverse=True)
        slots = [None] * SLOTS
        kept = 0
        for gain, x, y, z, difference in gains:
            code = (x * size + y) * size + z
            h = code * 0x9E3779B1 & 0xFFFFFFFF
            slot = (h >> 16) * SLOTS >> 16
            mark = (h & 0xFFFF) * 92 >> 16
            for at in slot, slot ^ 1:
                if slots[at] is None:
                    slots[at] = (mark, difference + ZERO)
                    kept += 1
                    break
            if kept > SLOTS * 0.97:
                break
        self.kept = kept
        self.slots = [v for slot in slots for v in (slot or (0, ZERO))]

    def gain(self, x, y, z, probability, p, count):
        exact = -math.log2(probability) * UNITS
        base = min(TOP, -math.log2(p[y][z]) * UNITS)
        difference = max(-ZERO, min(TOP - ZERO, round(exact - base)))
        # A rarer trigram than its pairs promise is worth less: the text seldom shows it.
        worth = count * -difference if difference < 0 else count * difference * 0.5
        return worth, x, y, z, difference

    def marks_from(self, counts):
        self.separators = sum(n for c, n in counts.items() if unicodedata.category(c)[0] not in "LM")
        self.counts = counts


def read(folder, name):
    return open(f"{folder}/{name}.txt", encoding="utf-8").read()


def write(path, note, text):
    with open(path, "w", encoding="ascii") as file:
        file.write(f"// Made by tools/tables/detect_models.py. {note}\n{text}\n")


def write_letters(out, rows):
    lines = [f"{{0x{ord(c):04x}, {SCRIPTS.index(script)}, {i}, {str(upper).lower()}}},"
             for c, (script, i, upper) in sorted(rows.items())]
    text = "\n".join(" ".join(lines[i:i + 4]) for i in range(0, len(lines), 4))
    write(out + "/detect_letters.inc", "Character, script, number in the script, upper case.", text)


def make_marks(languages):
    pool = collections.Counter()
    candidates = {c for c in all_characters() if not is_letter(c) and c.isprintable() or c == "\u00a0"}
    for language in languages:
        for c, n in language.counts.items():
            if c in candidates:
                pool[c] += n / language.separators
    for c in TYPOGRAPHIC:
        pool[c] += 1
    return sorted(c for c, _ in pool.most_common(MARKS))


def mark_cost(language, mark):
    share = (language.counts[mark] + 0.5) / (language.separators + 100)
    return cost(1 / 128 if mark in TYPOGRAPHIC else share)


def write_marks(out, marks):
    values = [f"0x{ord(c):04x}," for c in marks]
    text = "\n".join(" ".join(values[i:i + 12]) for i in range(0, len(values), 12))
    write(out + "/detect_marks.inc", "Characters beside letters that texts often contain, in order.", text)


def write_languages(out, languages, marks):
    rows = []
    for l in languages:
        prices = [mark_cost(l, c) for c in marks]
        rows.append(f'{{"{l.name}", {SCRIPTS.index(l.script)}, {l.symbols},\n'
                    f'{literal(l.map)},\n{literal(l.single)},\n{literal(l.pairs)},\n{literal(l.slots)},\n{literal(prices)}}},')
    write(out + "/detect_languages.inc",
          "Name, script, number of symbols, symbols of the script's letters, letters, pairs, trigrams, marks.",
          "\n".join(rows))


RANGES = [(0x2010, 0x2070), (0x3000, 0x3100), (0x4E00, 0xA000), (0xFF00, 0xFFF0)]
HANGUL = (0xAC00, 0xD7A4)
LEVELS = 9


def level(bits):
    return min(LEVELS - 1, max(0, round((bits - 4.5) / 1.6)))


def usual(c, name):
    """Returns the characters that an unseen one counts as, by its row in the national standard."""
    try:
        code = c.encode({"ja": "euc_jp", "zh": "gb2312", "tw": "big5", "ko": "euc_kr"}[name])
    except UnicodeEncodeError:
        return 0.03
    if len(code) != 2:
        return 0.03
    lead = code[0]
    common = {"ja": 0xB0 <= lead <= 0xCF, "zh": 0xB0 <= lead <= 0xD7, "tw": 0xA4 <= lead <= 0xC6,
              "ko": 0xB0 <= lead <= 0xC8}[name]
    return 1.0 if common else 0.2


def write_ideographs(out, folder):
    rows = []
    for name in "ja", "zh", "tw", "ko":
        text = read(folder, name)
        ranges = RANGES + ([HANGUL] if name == "ko" else [])
        counts = collections.Counter(c for c in text if any(a <= ord(c) < b for a, b in ranges))
        total = sum(counts.values())
        levels = []
        for a, b in ranges:
            for c in range(a, b):
                n = counts[chr(c)]
                levels.append(level(-math.log2((n + 2 * usual(chr(c), name)) / (total + 8000))))
        values = [levels[i] * LEVELS + levels[i + 1] for i in range(0, len(levels), 2)]
        rows.append(f'{{"{name}",\n{literal(values)}}},')
    write(out + "/detect_ideographs.inc", "Name, costs of the characters.", "\n".join(rows))


def main():
    folder, out = sys.argv[1:]
    rows, ids = make_letters()
    write_letters(out, rows)
    languages = []
    for script in SCRIPTS:
        for name in LATIN if script == "Latin" else OTHER[script]:
            l = Language(name, script, fold(read(folder, name), name), rows, ids)
            languages.append(l)
            print(name, l.symbols, l.kept, flush=True)
    marks = make_marks(languages)
    write_marks(out, marks)
    write_languages(out, languages, marks)
    write_ideographs(out, folder)
    size = sum(len(l.map) + len(l.pairs) + len(l.slots) + MARKS for l in languages)
    print("bytes:", size + 3 * (96 + 256 + 20992 + 240) // 2 + (96 + 256 + 20992 + 240 + 11172) // 2)
    print("ids:", {s: max(i.values()) for s, i in ids.items()})


if __name__ == "__main__":
    main()
