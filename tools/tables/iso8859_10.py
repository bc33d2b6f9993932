#!/usr/bin/env python3
"""Writes genutil/mbutil/iso8859_10.inc: the characters of bytes 0xA0 to 0xFF of ISO 8859-10, from
the published table in Python's codec."""
import pathlib

OUT = pathlib.Path(__file__).resolve().parents[2] / 'genutil/mbutil/iso8859_10.inc'


def main():
    characters = bytes(range(0xA0, 0x100)).decode('iso8859_10')
    lines = ['// ISO 8859-10 from 0xA0 on, written by tools/tables/iso8859_10.py.\n']
    for i in range(0, 96, 12):
        lines.append(' '.join(f'0x{ord(c):04X},' for c in characters[i:i + 12]) + '\n')
    OUT.write_text(''.join(lines), encoding='ascii')


main()
