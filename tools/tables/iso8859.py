#!/usr/bin/env python3
"""Writes genutil/mbutil/iso8859.inc: the characters of bytes 0xA0 to 0xFF of the parts of ISO 8859
that are no code page of Windows, from the published tables in Python's codecs."""
import pathlib

OUT = pathlib.Path(__file__).resolve().parents[2] / 'genutil/mbutil/iso8859.inc'
PARTS = (10, 11, 13, 14, 16)


def main():
    lines = ['// ISO 8859 from 0xA0 on, written by tools/tables/iso8859.py. 0xFFFF: no character.\n']
    for part in PARTS:
        characters = bytes(range(0xA0, 0x100)).decode(f'iso8859_{part}', 'replace').replace('\ufffd', '\uffff')
        lines.append(f'{{{part}, {{\n')
        for i in range(0, 96, 12):
            lines.append(' '.join(f'0x{ord(c):04X},' for c in characters[i:i + 12]) + '\n')
        lines.append('}},\n')
    OUT.write_text(''.join(lines), encoding='ascii')


main()
