#!/usr/bin/env python3
"""Checks that a built library has the hardening that its flags ask for: hardening.py LIBRARY OBJDUMP"""
import re
import subprocess
import sys

LIBRARY, OBJDUMP = sys.argv[1:3]


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def of_dll():
    text = output(OBJDUMP, '-p', LIBRARY)
    flags = int(re.search(r'DllCharacteristics\s+([0-9a-f]+)', text).group(1), 16)
    yield 'random base address', flags & 0x40
    yield 'no execution of data', flags & 0x100
    yield '64-bit random addresses', flags & 0x20 or 'pei-i386' in text or 'PE32+' not in text
    yield 'stack protector', '__stack_chk_fail' in output(OBJDUMP, '-t', LIBRARY) or 'ssp' in text.lower()


def of_so():
    dynamic = output('readelf', '-dW', LIBRARY)
    segments = output('readelf', '-lW', LIBRARY)
    symbols = output('readelf', '--dyn-syms', '-W', LIBRARY)
    yield 'immediate binding', 'BIND_NOW' in dynamic or re.search(r'FLAGS_1.*NOW', dynamic)
    yield 'read-only relocations', 'GNU_RELRO' in segments
    yield 'no execution of the stack', re.search(r'GNU_STACK.*\bRW\b', segments)
    yield 'no writable code', not re.search(r'LOAD.*\bRWE\b', segments)
    yield 'stack protector', '__stack_chk_fail' in symbols
    yield 'checked copies', re.search(r'__(memcpy|memmove|snprintf|vsnprintf|memset|strcpy)_chk', symbols)
    if 'X86-64' in output('readelf', '-hW', LIBRARY):
        # The mark of the whole file depends on the C library's start files, which may lack it.
        code = output(OBJDUMP, '-d', '--no-show-raw-insn', LIBRARY)
        yield 'control-flow protection', code.count('endbr64') > 1000


def main():
    missing = [name for name, found in (of_dll() if LIBRARY.endswith('.dll') else of_so()) if not found]
    for name in missing:
        print(f'{LIBRARY}: no {name}', file=sys.stderr)
    return 1 if missing else 0


if __name__ == '__main__':
    sys.exit(main())
