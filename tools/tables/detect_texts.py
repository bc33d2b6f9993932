#!/usr/bin/env python3
"""Collects the texts from which detect_models.py makes the tables of the detector.

    detect_texts.py ROOT OUT

ROOT is a folder into which Debian packages were unpacked with `dpkg-deb -x`. Only manual pages
(/usr/share/man/LANGUAGE) and message catalogues (LC_MESSAGES/*.mo) in it are read. OUT receives one
UTF-8 file for each language. docs/detection.md lists the packages.
"""
import glob
import gzip
import html
import os
import random
import re
import struct
import sys
import unicodedata

# Name of the language, its names in folders.
LANGUAGES = {
    "en": [], "de": ["de"], "fr": ["fr"], "es": ["es"], "pt": ["pt_BR", "pt"], "it": ["it"],
    "nl": ["nl"], "sv": ["sv"], "da": ["da"], "nb": ["nb", "nb_NO", "no"], "nn": ["nn"],
    "fi": ["fi"], "is": ["is"], "ca": ["ca"], "gl": ["gl"], "eu": ["eu"], "ga": ["ga"],
    "cy": ["cy"], "af": ["af"], "id": ["id"], "sq": ["sq"], "eo": ["eo"], "pl": ["pl"],
    "cs": ["cs"], "sk": ["sk"], "hu": ["hu"], "ro": ["ro"], "hr": ["hr", "bs", "sr@latin"],
    "sl": ["sl"], "et": ["et"], "lv": ["lv"], "lt": ["lt"], "tr": ["tr"], "vi": ["vi"],
    "ru": ["ru"], "uk": ["uk"], "bg": ["bg"], "be": ["be"], "mk": ["mk"], "sr": ["sr"],
    "el": ["el"], "he": ["he"], "ar": ["ar"], "fa": ["fa"], "th": ["th"], "ja": ["ja"],
    "zh": ["zh_CN"], "tw": ["zh_TW", "zh_HK"], "ko": ["ko"],
}
SCRIPTS = {"ru": "CYRILLIC", "uk": "CYRILLIC", "bg": "CYRILLIC", "be": "CYRILLIC",
           "mk": "CYRILLIC", "sr": "CYRILLIC", "el": "GREEK", "he": "HEBREW", "ar": "ARABIC",
           "fa": "ARABIC", "th": "THAI", "ja": "CJK HIRAGANA KATAKANA", "zh": "CJK", "tw": "CJK",
           "ko": "HANGUL"}
SIZE = {"ja": 900000, "zh": 900000, "tw": 900000, "ko": 900000}
COMMON_SIZE = 900000  # characters of each language


def catalogue(path):
    """Yields the messages of a catalogue with their translations."""
    data = open(path, "rb").read()
    if len(data) < 28:
        return
    order = "<" if data[:4] == b"\xde\x12\x04\x95" else ">"
    count, originals, translations = struct.unpack(order + "3I", data[8:20])
    for i in range(1, count):
        texts = []
        for table in originals, translations:
            size, at = struct.unpack(order + "2I", data[table + 8 * i:table + 8 * i + 8])
            texts.append(data[at:at + size])
        try:
            original = texts[0].split(b"\x04")[-1].split(b"\0")[0].decode("utf-8")
            yield original, texts[1].split(b"\0")[-1].decode("utf-8")
        except UnicodeDecodeError:
            pass


def clean_message(text):
    text = html.unescape(re.sub(r"<[^<>]*>", " ", text))
    text = re.sub(r"%[-+ #0-9.*]*(?:l|ll|h|z|j|q)?[a-zA-Z]|%\d+|\{[^{}]*\}|\$\([^()]*\)|\$\{?\w+\}?", " ", text)
    text = re.sub(r"[_&~](?=\w)", "", text)
    text = re.sub(r"\\.", " ", text)
    return re.sub(r"\s+", " ", text).strip()


def clean_page(text):
    lines = []
    for line in text.splitlines():
        if line.startswith((".\\\"", "'\\\"", ".TH", ".\"", ".de", ".if", ".ie", ".el", ".ds")):
            continue
        line = re.sub(r"^[.']\s*[A-Za-z]+\s*", "", line)
        line = re.sub(r"\\f(?:\(..|\[[^\]]*\]|.)|\\s[-+]?\d|\\[&/,|^!:%]", "", line)
        line = line.replace("\\-", "-").replace("\\ ", " ").replace("\\(aq", "'")
        line = re.sub(r"\\(?:\(..|\[[^\]]*\]|\*\(..|\*.|.)", " ", line)
        lines.append(line)
    return re.sub(r"[ \t]+", " ", "\n".join(lines))


def wanted(text, language, least=0.7):
    """Returns true if most letters of a text are of the language's script."""
    letters = [c for c in text if c.isalpha()]
    script = SCRIPTS.get(language, "LATIN")
    names = tuple(script.split())
    own = sum(unicodedata.name(c, "").startswith(names) for c in letters)
    return len(letters) > 0 and own >= least * len(letters)


def folders(root, names):
    for name in names:
        yield from glob.glob(f"{root}/**/{name}/LC_MESSAGES", recursive=True)


def messages(root, language):
    seen = set()
    where = ["de", "fr"] if language == "en" else LANGUAGES[language]
    for folder in sorted(folders(root, where)):
        for path in sorted(glob.glob(folder + "/*.mo")):
            for original, translation in catalogue(path):
                if language == "en":
                    translation = original
                elif translation == original:
                    continue
                text = clean_message(translation)
                if len(text) < (6 if language in SIZE else 15) or text in seen:
                    continue
                if not wanted(text, language):
                    continue
                seen.add(text)
                yield text


def pages(root, language):
    """Yields the paragraphs of manual pages."""
    seen = set()
    names = LANGUAGES[language] if language != "en" else [""]
    for name in names:
        for path in sorted(glob.glob(f"{root}/usr/share/man/{name}/man*/*.gz")):
            try:
                text = gzip.open(path).read().decode("utf-8")
            except (UnicodeDecodeError, OSError):
                continue
            for paragraph in clean_page(text).split("\n"):
                paragraph = paragraph.strip()
                if len(paragraph) < 30 or paragraph in seen or not wanted(paragraph, language):
                    continue
                seen.add(paragraph)
                yield paragraph


def sample(texts, size, chosen):
    texts = list(texts)
    chosen.shuffle(texts)
    out, length = [], 0
    for text in texts:
        if length >= size:
            break
        out.append(text)
        length += len(text) + 1
    return out, length


def main():
    root, out = sys.argv[1:]
    os.makedirs(out, exist_ok=True)
    for language in sys.argv[3:] or LANGUAGES:
        chosen = random.Random(language)
        size = SIZE.get(language, COMMON_SIZE)
        from_pages, length = sample(pages(root, language), size // 3, chosen)
        from_messages, more = sample(messages(root, language), size - length, chosen)
        lines = from_pages + from_messages
        chosen.shuffle(lines)
        with open(f"{out}/{language}.txt", "w", encoding="utf-8") as file:
            file.write("\n".join(lines) + "\n")
        print(language, length, more, flush=True)


if __name__ == "__main__":
    main()
