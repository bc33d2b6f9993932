#!/usr/bin/env python3
"""Writes genutil/mbutil/jisx0212.inc: the characters of JIS X 0212, from the published table
in Python's EUC-JP codec.

One string for each row that has characters, one mark for each cell: '.' for no character; '/' and four
hexadecimal digits for a character; a digit or letter for the distance (1 to 62) from the previous one.
Cells missing at the end of a row have no character."""
import pathlib
import string

MARKS = string.digits + string.ascii_uppercase + string.ascii_lowercase
OUT = pathlib.Path(__file__).resolve().parents[2] / 'genutil/mbutil/jisx0212.inc'


def character(row, cell):
    try:
        return ord(bytes([0x8F, 0xA0 + row, 0xA0 + cell]).decode('euc_jp'))
    except UnicodeDecodeError:
        return None


def main():
    lines = ['// JIS X 0212, written by tools/tables/jisx0212.py, which describes the notation.\n']
    last = 0
    for row in range(1, 95):
        text = ''
        for cell in range(1, 95):
            this = character(row, cell)
            if this is None:
                text += '.'
                continue
            distance = this - last
            text += MARKS[distance - 1] if 1 <= distance <= len(MARKS) else f'/{this:04X}'
            last = this
        text = text.rstrip('.')
        if not text:
            continue
        pieces = [text[i:i + 84] for i in range(0, len(text), 84)]
        body = '\n'.join(f'     "{piece}"' for piece in pieces).lstrip()
        lines.append(f'{{{row}, {body}}},\n')
    OUT.write_text(''.join(lines), encoding='ascii')


main()
