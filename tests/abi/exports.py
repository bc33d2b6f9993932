#!/usr/bin/env python3
"""Compares the names that the library exports with the recorded list beside this script.

usage: exports.py LIBRARY           check: every recorded name is there, and none that is not recorded
       exports.py LIBRARY --record  write the list anew

A name that leaves the list breaks programs that are linked to it. C functions must appear unmangled
and undecorated on every target; C++ names are compared on Linux, whose mangling is recorded."""
import pathlib
import re
import struct
import subprocess
import sys

LINKER = {'__bss_start', '_edata', '_end'}  # names that it gives away with some C++ libraries
RECORD = pathlib.Path(__file__).with_name('exports.txt')


def processor(library):
    image = pathlib.Path(library).read_bytes()
    header, = struct.unpack_from('<I', image, 0x3C)
    machine, = struct.unpack_from('<H', image, header + 4)
    return {0x14C: 'i686', 0x8664: 'x86_64'}[machine]


def exported_by_dll(library):
    objdump = processor(library) + '-w64-mingw32-objdump'
    text = subprocess.run([objdump, '-p', library], check=True, capture_output=True, text=True).stdout
    table = text[text.index('[Ordinal/Name Pointer] Table'):]
    return {match.group(1) for match in re.finditer(r'^\s*\[\s*\d+\]\s+(\S+)$', table, re.MULTILINE)}


def exported_by_so(library):
    """Returns the names and, apart from them, those that any program may define too (weak ones)."""
    text = subprocess.run(['nm', '-D', '--defined-only', library], check=True, capture_output=True, text=True).stdout
    names, weak = set(), set()
    for line in text.splitlines():
        kind, name = line.split()[-2:]
        (weak if kind in 'uvwVW' else names).add(name.split('@')[0])
    return names - LINKER, weak


def as_recorded(library, names, recorded):
    """Replaces names whose types are others here: the record is of x86-64."""
    is_32_bit = pathlib.Path(library).read_bytes()[4] == 1

    def canonical(name):
        name = re.sub('P13__va_list_tag|St9__va_list', 'Pc', name)
        return name.replace('m', 'j') if is_32_bit else name  # std::size_t

    missing = {canonical(name): name for name in recorded - names}
    return {missing.get(canonical(name), name) if name not in recorded else name for name in names}


def main():
    library = sys.argv[1]
    dll = library.endswith('.dll')
    names, weak = (exported_by_dll(library), set()) if dll else exported_by_so(library)
    if '--record' in sys.argv:
        RECORD.write_text('\n'.join(sorted(names)) + '\n')
        return 0
    recorded = set(RECORD.read_text().split())
    if dll:  # classes are mangled alike, but some helpers of theirs exist on one target only
        names = {name for name in names if not name.startswith('_Z')}
        recorded = {name for name in recorded if not name.startswith('_Z')}
    names |= weak & recorded  # compilers differ in what is weak
    if not dll:
        names = as_recorded(library, names, recorded)
    for name in sorted(recorded - names):
        print(f'no longer exported: {name}', file=sys.stderr)
    for name in sorted(names - recorded):
        print(f'exported but not recorded: {name}', file=sys.stderr)
    print(f'{len(names)} names exported')
    return 0 if names == recorded else 1


if __name__ == '__main__':
    sys.exit(main())
