#!/usr/bin/env python3
"""Writes genutil/mbutil/best_fit.inc: substitutes for characters that a code page lacks.

Each row is {character, first, second, plain}: two characters that make it up (the base letters and
tone marks of code page 1258), or one that is close to it, or none; and a plainer letter, for a code
page that lacks those too. In a row of zeroes, the character may be omitted."""
import unicodedata

TONES = (0x0300, 0x0301, 0x0303, 0x0309, 0x0323)
VIETNAMESE = [chr(c) for c in range(0x80)] + list('ÂâĂăÊêÔôƠơƯư')

LETTERS = {
    'Đ': 'D', 'đ': 'd', 'Ħ': 'H', 'ħ': 'h', 'ı': 'i', 'Ł': 'L', 'ł': 'l', 'Ø': 'O', 'ø': 'o',
    'Ŧ': 'T', 'ŧ': 't', 'Ə': 'E', 'ə': 'e', 'Ð': 'D', 'ð': 'd', 'Þ': 'T', 'þ': 't', 'ß': 's',
    'Æ': 'A', 'æ': 'a', 'Œ': 'O', 'œ': 'o', 'Ŋ': 'N', 'ŋ': 'n',
    # Cyrillic letters of languages that use the code page of Russian
    'Ә': 'Э', 'ә': 'э', 'Ғ': 'Г', 'ғ': 'г', 'Қ': 'К', 'қ': 'к', 'Ҝ': 'К', 'ҝ': 'к', 'Ң': 'Н',
    'ң': 'н', 'Ө': 'О', 'ө': 'о', 'Ұ': 'У', 'ұ': 'у', 'Ү': 'У', 'ү': 'у', 'Һ': 'Х', 'һ': 'х',
    'Ҳ': 'Х', 'ҳ': 'х', 'Җ': 'Ж', 'җ': 'ж', 'Ҹ': 'Ч', 'ҹ': 'ч', 'Ӯ': 'У', 'ӯ': 'у',
    # Arabic letters of Persian and Urdu
    'ی': 'ي', 'ک': 'ك', 'ە': 'ه', 'ۃ': 'ة',
    # punctuation and currency signs
    '\u00A0': ' ', '\u2007': ' ', '\u2009': ' ', '\u202F': ' ', '\u2010': '-', '\u2011': '-',
    '\u2012': '-', '\u2013': '-', '\u2014': '-', '\u2212': '-', '\u2018': "'", '\u2019': "'",
    '\u02BB': "'", '\u02BC': "'", '\u201C': '"', '\u201D': '"', '\u05F3': "'", '\u05F4': '"',
    '،': ',', '٫': '.', '٬': ',', '₩': '￦', '¥': '￥', '￥': '¥',
}
PREFERRED = {'Ș': 'Ş', 'ș': 'ş', 'Ț': 'Ţ', 'ț': 'ţ', '\u02BB': '\u2018', '\u02BC': '\u2019'}
LEFT_OUT = [0x061C, 0x200B, 0x200C, 0x200D, 0x200E, 0x200F, 0xFEFF]


def tone_parts(c):
    for base in VIETNAMESE:
        for tone in TONES:
            if unicodedata.normalize('NFC', base + chr(tone)) == c:
                return ord(base), tone
    return 0, 0


def base_letter(c):
    base = unicodedata.normalize('NFD', c)[0]
    return LETTERS.get(base, base) if base != c else LETTERS.get(c)


def rows():
    letters = [chr(c) for c in (*range(0xC0, 0x250), *range(0x1E00, 0x1EFA))]
    for c in sorted({*letters, *LETTERS, *PREFERRED}):
        plain = base_letter(c)
        if not plain or plain == c:
            continue
        first, second = (ord(PREFERRED[c]), 0) if c in PREFERRED else tone_parts(c)
        yield ord(c), first, second, ord(plain)
    for c in LEFT_OUT:
        yield c, 0, 0, 0


print('// Character, its decomposition or a similar character, a plainer one. Sorted; written by')
print('// tools/tables/best_fit.py.')
line = ''
for row in sorted(rows()):
    cell = '{0x%04x, 0x%04x, 0x%04x, 0x%04x},' % row
    if len(line) + len(cell) + 1 > 100:
        print(line)
        line = ''
    line += (' ' if line else '') + cell
print(line)
