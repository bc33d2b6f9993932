#!/usr/bin/env python3
"""Fails when something above the platform seam includes a system's header or asks for a platform."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
HEADER = re.compile(
    r'#\s*include\s*<(windows|winsock2?|winreg|unistd|pthread|dirent|fcntl|spawn|sys/\w+|unicode/\w+'
    r'|sqlite3|dlfcn|iconv|langinfo)\.h>')
SWITCH = re.compile(r'#\s*(if|ifdef|ifndef|elif)\b.*(_WIN32|_WIN64|__linux__|__unix__|__MINGW)')


def faults(path):
    for number, line in enumerate(path.read_text(encoding='utf-8').splitlines(), 1):
        if HEADER.search(line) or SWITCH.search(line):
            yield f'{path.relative_to(ROOT)}:{number}: {line.strip()}'


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
    found = [fault for path in sources() for fault in faults(path)]
    for fault in found:
        print(fault, file=sys.stderr)
    if found:
        print('A platform belongs behind osutil/platform/: add a call to its contract.', file=sys.stderr)
    return 1 if found else 0


if __name__ == '__main__':
    sys.exit(main())
