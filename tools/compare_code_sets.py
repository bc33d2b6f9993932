#!/usr/bin/env python3
"""Compares the library's code sets with Python's codecs (every code that decodes and every character
that encodes) and with iconv (every character that encodes).

usage: compare_code_sets.py LIBRARY [NUMBER...]

Prints a line for each code set and codec, with the differences as ranges. docs/code-pages.md explains
each of them."""
import ctypes
import shutil
import subprocess
import sys

SETS = {  # number: (Python's codec, name for iconv)
    0: ('cp1252', 'CP1252'), 1: ('latin_1', 'ISO-8859-1'), 2: ('iso8859_15', 'ISO-8859-15'),
    4: ('euc_jp', 'EUC-JP-MS'), 5: ('cp932', 'CP932'), 7: ('gbk', 'CP936'), 8: ('gb2312', 'EUC-CN'),
    9: ('cp950', 'BIG5'), 10: (None, 'EUC-TW'), 11: ('cp949', 'UHC'), 12: ('johab', 'JOHAB'),
    13: ('euc_kr', 'EUC-KR'),
    **{12 + n: (f'iso8859_{n}', f'ISO-8859-{n}') for n in range(2, 10)}, 22: ('iso8859_10', 'ISO-8859-10'),
    **{n: (f'cp{page}', f'CP{page}')
       for n, page in zip(range(23, 31), (1250, 1251, 1253, 1254, 1255, 1256, 1257, 1258))},
    40: ('cp874', 'CP874'), 100: ('gb18030', 'GB18030'), 101: ('iso8859_11', 'ISO-8859-11'),
    102: ('iso8859_13', 'ISO-8859-13'), 103: ('iso8859_14', 'ISO-8859-14'),
    104: ('iso8859_16', 'ISO-8859-16'), 105: ('koi8_r', 'KOI8-R'), 106: ('koi8_u', 'KOI8-U'),
    107: ('cp437', 'CP437'), 108: ('cp850', 'CP850'), 109: ('cp852', 'CP852'), 110: ('cp866', 'CP866'),
}
UTF16 = 64


class Report(ctypes.Structure):
    _fields_ = [('lost_at', ctypes.POINTER(ctypes.c_size_t)), ('lost_at_size', ctypes.c_size_t),
                ('consumed', ctypes.c_size_t), ('produced', ctypes.c_size_t), ('lost', ctypes.c_size_t)]


class Library:
    def __init__(self, path):
        self.convert = ctypes.CDLL(path).mbConvert
        self.convert.argtypes = [ctypes.c_char_p, ctypes.c_size_t, ctypes.c_int, ctypes.c_char_p,
                                 ctypes.c_size_t, ctypes.c_int, ctypes.POINTER(Report)]
        self.out = ctypes.create_string_buffer(64)

    def __call__(self, text, source, target):
        report = Report()
        if not self.convert(text, len(text), source, self.out, 64, target, ctypes.byref(report)) or report.lost:
            return None
        return self.out.raw[:report.produced]


def codes(number):
    """Every code that the set may have, without those that begin with a shorter one."""
    yield from (bytes((a,)) for a in range(256))
    if number not in (4, 5, 7, 8, 9, 10, 11, 12, 13, 100):
        return
    yield from (bytes((a, b)) for a in range(0x80, 256) for b in range(0x30, 256))
    if number == 4:
        yield from (bytes((0x8F, a, b)) for a in range(0xA1, 0xFF) for b in range(0xA1, 0xFF))
    if number == 10:
        yield from (bytes((0x8E, p, a, b)) for p in range(0xA1, 0xA4) for a in range(0xA1, 0xFF)
                    for b in range(0xA1, 0xFF))
    if number == 100:
        yield from (bytes((a, b, c, d)) for a in range(0x81, 0x85) for b in range(0x30, 0x3A)
                    for c in range(0x81, 0xFF) for d in range(0x30, 0x3A))


def by_python(name):
    def decode(code):
        try:
            return code.decode(name)
        except UnicodeDecodeError:
            return None

    def encode(character):
        try:
            return character.encode(name)
        except UnicodeEncodeError:
            return None
    return decode, encode


def by_iconv(name):
    """One run of iconv: a line for each character of the first plane, empty if it has no code."""
    characters = [chr(c) for c in range(0x10000) if not 0xD800 <= c <= 0xDFFF and c not in (0xA, 0xD)]
    lines = ''.join(c + '\n' for c in characters).encode()
    out = subprocess.run(['iconv', '-c', '-f', 'UTF-8', '-t', name], input=lines, capture_output=True,
                         check=False).stdout
    table = dict(zip(characters, out.split(b'\n')))
    return lambda character: table.get(character, character.encode()) or None


def ranges(values):
    runs = []
    for value in values:
        if runs and value == runs[-1][1] + 1 and len(runs) > 0:
            runs[-1][1] = value
        else:
            runs.append([value, value])
    text = [f'{a:X}' if a == b else f'{a:X}-{b:X}' for a, b in runs]
    return ' '.join(text[:12]) + (f' and {len(text) - 12} more ranges' if len(text) > 12 else '')


def compare(library, number, name, decode, encode):
    lists = {'decodes otherwise': [], 'decodes alone': [], 'does not decode': [],
             'encodes otherwise': [], 'encodes alone': [], 'does not encode': []}
    for code in codes(number) if decode else ():
        ours = library(code, number, UTF16)
        ours = ours.decode('utf-16-le') if ours is not None else None
        ours = ours if ours is not None and len(ours) == 1 else None  # one code, not two shorter ones
        theirs = decode(code)
        theirs = theirs if theirs is not None and len(theirs) == 1 else None
        if ours != theirs:
            kind = 'does not decode' if ours is None else 'decodes alone' if theirs is None else 'decodes otherwise'
            lists[kind].append(int.from_bytes(code, 'big'))
    for unit in range(0x10000):
        if 0xD800 <= unit <= 0xDFFF:
            continue
        ours = library(b'z\0' + unit.to_bytes(2, 'little'), UTF16, number)  # a mark is none after "z"
        ours, theirs = ours and ours[1:], encode(chr(unit))
        if ours != theirs:
            kind = 'does not encode' if ours is None else 'encodes alone' if theirs is None else 'encodes otherwise'
            lists[kind].append(unit)
    for kind, values in lists.items():
        if values:
            print(f'{number} {name}: {kind}: {len(values)}: {ranges(values)}')
    if not any(lists.values()):
        print(f'{number} {name}: equal')


def main():
    library = Library(sys.argv[1])
    numbers = [int(n) for n in sys.argv[2:]] or list(SETS)
    for number in numbers:
        codec, iconv_name = SETS[number]
        if codec:
            compare(library, number, f'Python {codec}', *by_python(codec))
        if shutil.which('iconv'):
            compare(library, number, f'iconv {iconv_name}', None, by_iconv(iconv_name))


main()
