#!/usr/bin/env python3
"""Fails when source files call each other in a loop, seen by the symbols of their object files.

    tools/check_loops.py FOLDER    the folder of the library's object files

Two files that need each other hold one concept, or share a third that has no name yet.
"""
import pathlib
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
from check_seam import loops  # noqa: E402

# A failed allocation is reported to the assertion service, which is in a higher layer.
HOOK = 'ReportFailedAllocation'


def symbols(folder):
    """Returns the file that defines each symbol, and the symbols that each file needs."""
    defined, needed = {}, {}
    for path in sorted(folder.rglob('*.o')) + sorted(folder.rglob('*.obj')):
        name = str(path.relative_to(folder).with_suffix('')).removesuffix('.cpp')
        needed[name] = set()
        output = subprocess.run(['nm', str(path)], capture_output=True, text=True, check=True).stdout
        for line in output.splitlines():
            kind, symbol = line.split()[-2:]
            if kind in 'TDBRS':
                defined[symbol] = name
            elif kind == 'U' and HOOK not in symbol:
                needed[name].add(symbol)
    return defined, needed


def main():
    defined, needed = symbols(pathlib.Path(sys.argv[1]))
    if not defined:
        print(f'{sys.argv[1]}: no object files', file=sys.stderr)
        return 1
    calls = {name: {defined[s] for s in wanted if s in defined} - {name}
             for name, wanted in needed.items()}
    found = loops(calls)
    for group in found:
        print('a loop of calls: ' + ', '.join(group), file=sys.stderr)
        for name in group:
            for symbol in sorted(needed[name]):
                if defined.get(symbol) in group and defined[symbol] != name:
                    print(f'  {name} needs {symbol} of {defined[symbol]}', file=sys.stderr)
    return 1 if found else 0


if __name__ == '__main__':
    sys.exit(main())
