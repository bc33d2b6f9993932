#!/usr/bin/env python3
"""Writes genutil/mbutil/gb18030.inc: the two-byte codes of GB18030 that code page 936 lacks, as runs
of consecutive characters in consecutive codes, from the tables in Python's codecs, which are those
of the edition of 2000. The edition of 2005 exchanges the characters of two codes."""
import pathlib

OUT = pathlib.Path(__file__).resolve().parents[2] / 'genutil/mbutil/gb18030.inc'


def character(code, name):
    try:
        return ord(bytes((code >> 8, code & 0xFF)).decode(name))
    except UnicodeDecodeError:
        return None


def main():
    runs = []
    for lead in range(0x81, 0xFF):
        for trail in (*range(0x40, 0x7F), *range(0x80, 0xFF)):
            code = lead << 8 | trail
            ours, theirs = character(code, 'gb18030'), character(code, 'cp936')
            if ours == theirs:
                continue
            run = runs[-1] if runs else None
            if run and code == run[0] + run[2] and ours == run[1] + run[2]:
                run[2] += 1
            else:
                runs.append([code, ours, 1])
    lines = ['// First code, its character, number of codes; written by tools/tables/gb18030.py.\n']
    cells = [f'{{0x{code:04X}, 0x{first:04X}, {count}}},' for code, first, count in runs]
    for i in range(0, len(cells), 4):
        lines.append(' '.join(cells[i:i + 4]) + '\n')
    OUT.write_text(''.join(lines), encoding='ascii')


main()
