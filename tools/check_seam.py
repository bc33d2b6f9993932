#!/usr/bin/env python3
"""Fails when something above the platform seam includes a system's header or asks for a platform, and
when a file other than genutil/simd.h uses the vector instructions of a processor."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
HEADER = re.compile(
    r'#\s*include\s*<(windows|winsock2?|winreg|unistd|pthread|dirent|fcntl|spawn|sys/\w+|unicode/\w+'
    r'|sqlite3|dlfcn|iconv|langinfo)\.h>')
SWITCH = re.compile(r'#\s*(if|ifdef|ifndef|elif)\b.*(_WIN32|_WIN64|__linux__|__unix__|__MINGW)')
# AArch64 intrinsics need no pattern of their own: they come from <arm_neon.h> alone.
VECTOR = re.compile(r'#\s*include\s*<(\w*intrin|arm_\w+)\.h>|\b_mm\d*_|\b__m\d+i?\b')
VECTOR_HEADER = ROOT / 'genutil/simd.h'


def faults(path, *patterns):
    for number, line in enumerate(path.read_text(encoding='utf-8').splitlines(), 1):
        if any(pattern.search(line) for pattern in patterns):
            yield f'{path.relative_to(ROOT)}:{number}: {line.strip()}'


def all_sources():
    for folder in ('include', 'genutil', 'osutil', 'tests', 'bench', 'fuzz', 'tools', 'examples'):
        for path in sorted((ROOT / folder).rglob('*')):
            if path.suffix in ('.h', '.c', '.cpp', '.inc'):
                yield path


def sources():
    for folder in ('genutil', 'osutil'):
        for path in sorted((ROOT / folder).rglob('*')):
            if path.suffix in ('.h', '.cpp', '.inc') and 'platform' not in path.parts:
                yield path
    windows = ROOT / 'osutil/platform/win32'
    for path in sorted(windows.glob('*')):
        if path.name != 'windows_api.h' and path.suffix in ('.h', '.cpp'):
            if re.search(r'#\s*include\s*<(windows|winsock2?|win\w+)\.h>', path.read_text(encoding='utf-8')):
                yield path


def main():
    platform = [fault for path in sources() for fault in faults(path, HEADER, SWITCH)]
    vector = [fault for path in all_sources() if path != VECTOR_HEADER for fault in faults(path, VECTOR)]
    for fault in platform + vector:
        print(fault, file=sys.stderr)
    if platform:
        print('A platform belongs behind osutil/platform/: add a call to its contract.', file=sys.stderr)
    if vector:
        print('Vector instructions belong in genutil/simd.h: add an operation to it.', file=sys.stderr)
    return 1 if platform or vector else 0


if __name__ == '__main__':
    sys.exit(main())
