#!/usr/bin/env python3
"""Writes genutil/mbutil/big5_cns.inc: the correspondence of Big5 and CNS 11643.

    tools/tables/make_big5_cns.py > genutil/mbutil/big5_cns.inc

The two sets contain the same symbols and hanzi in the same order, except for a few that were
reordered, so the correspondence is a short list of runs. It is derived from two published pairs of
tables, each of which maps both sets to Unicode:

  ibm-950 and ibm-964 (uconv, Debian's icu-devtools) for all of planes 1 and 2. These two are
      consistent: characters missing in Unicode have the same private code in both.
  BIG5 and EUC-TW (iconv) for the extensions in row 0xF9: seven hanzi that are in plane 3, and
      line-drawing characters that row 0xA2 also contains.

BIG5 and EUC-TW of iconv differ from the published correspondence where a table maps only one of
the sets to a similar Unicode character: punctuation and arrows in rows 0xA1 and 0xA2, and hanzi 0xC255,
whose variant in plane 3 has the code point to which iconv maps 0xC255. The check at the end of this program
lists each of them; a new one is an error.
"""
import subprocess
import sys

TRAILS = [*range(0x40, 0x7F), *range(0xA1, 0xFF)]
GRAPHIC = range(0xA1, 0xFF)
# Deviations of the iconv tables from the published correspondence.
ICONV_DIFFERS = {
    *range(0xA155, 0xA159), 0xA1AB, 0xA1AC, 0xA1E1, 0xA1E2,  # symbols with several similar characters
    0xA2CC, 0xA2CE,  # Suzhou numerals ten and thirty, which Unicode unifies with the hanzi
    0xC255,
}


def run(command, codes):
    """Returns the Unicode character of each code. Codes without one are omitted."""
    out = subprocess.run(command, input=b"\n".join(codes), capture_output=True, check=False)
    if out.returncode != 0:
        if len(codes) == 1:
            return {}
        half = len(codes) // 2
        return run(command, codes[:half]) | run(command, codes[half:])
    texts = out.stdout.decode().split("\n")
    assert len(texts) == len(codes)
    return {code: text for code, text in zip(codes, texts) if text not in ("\ufffd", "\x1a")}


def uconv(name, codes):
    return run(["uconv", "-f", name, "-t", "UTF-8", "--from-callback", "substitute"], codes)


def iconv(name, codes):
    return run(["iconv", "-f", name, "-t", "UTF-8"], codes)


def pair(big5_chart, euc_chart, codes):
    """Returns {big5: [(plane, row and cell), ...]} for the characters in both tables."""
    places = {}
    planes = [bytes([row, cell]) for row in GRAPHIC for cell in GRAPHIC]
    for prefix in (b"", b"\x8e\xa2", b"\x8e\xa3"):
        for code, text in euc_chart([prefix + place for place in planes]).items():
            plane = code[1] - 0xA0 if len(code) == 4 else 1
            places.setdefault(text, []).append((plane, (code[-2] << 8 | code[-1]) & 0x7F7F))
    chart = big5_chart([code.to_bytes(2, "big") for code in codes])
    return {int.from_bytes(code, "big"): places.get(text, []) for code, text in chart.items()}


def choose(big5, places):
    """Chooses between cells by the position of the code in Big5, because a table may map a numeral or a
    radical to the code point of a hanzi. Rows 0x24 to 0x29 of plane 1 contain symbols, the others hanzi."""
    hanzi = 0xA440 <= big5 <= 0xC67E or big5 >= 0xC940
    fitting = [p for p in places if p[0] > 1 or (p[1] >= 0x4400) == hanzi]
    return fitting[0] if fitting else None


def correspondence():
    all_codes = [lead << 8 | trail for lead in GRAPHIC for trail in TRAILS]
    ibm = pair(lambda c: uconv("ibm-950", c), lambda c: uconv("ibm-964", c),
               [c for c in all_codes if c < 0xF9D6])
    glibc = pair(lambda c: iconv("BIG5", c), lambda c: iconv("EUC-TW", c), all_codes)
    table = {c: choose(c, places) for c, places in ibm.items()}
    table = {c: place for c, place in table.items() if place and place[0] <= 2}
    for c, places in glibc.items():
        if c >= 0xF9D6 and places:
            table[c] = places[0]
    strays = {c for c, places in glibc.items() if places and table.get(c) not in places}
    if strays != ICONV_DIFFERS:
        sys.exit("iconv differs in " + " ".join(f"{c:04X}" for c in sorted(strays)))
    # The second codes of hanzi in Big5 map to Unicode's compatibility area.
    table[0xC94A] = table[0xA461]
    table[0xDDFC] = table[0xDCD1]
    return table


def follows(code, previous):
    index = TRAILS.index(previous & 0xFF) + 1
    return code == (previous & 0xFF00 | TRAILS[index] if index < len(TRAILS)
                    else (previous & 0xFF00) + 0x0100 | TRAILS[0])


def linear(place):
    return place[0] * 94 * 94 + (place[1] >> 8) * 94 + (place[1] & 0xFF)


def runs(table):
    out, seen = [], set()
    last = None
    for code, place in sorted(table.items()):
        one_way = place in seen
        seen.add(place)
        if (last and follows(code, last[0]) and linear(place) == linear(last[1]) + 1
                and one_way == out[-1][4]):
            out[-1][3] += 1
        else:
            out.append([code, place[0], place[1], 1, one_way])
        last = (code, place)
    return out


def main():
    print("// Big5 and CNS 11643 in runs: first Big5 code, plane, first row and cell, length, whether the\n"
          "// reverse mapping differs. Written by tools/tables/make_big5_cns.py.")
    for code, plane, place, count, one_way in runs(correspondence()):
        print(f"{{0x{code:04X}, {plane}, 0x{place:04X}, {count}, {'true' if one_way else 'false'}}},")


main()
