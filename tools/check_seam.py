#!/usr/bin/env python3
"""Fails if a file includes a higher layer, uses a platform macro or header outside the platform layer, or
uses the vector instructions of a processor outside genutil/simd.h.

An include may point to the file's own layer or to a lower one. The few calls that must go up do so
through a header of declarations, listed in UPWARD with its reason.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

# From bottom to top. A file belongs to the first row with a prefix of its path. The implementations of a
# header of the platform layer belong to the family that they serve; the headers are at the bottom.
LAYERS = [
    ('base', ['genutil/allocate', 'genutil/assert_allocation.h', 'genutil/ascii.h', 'genutil/atomic_ref.h',
              'genutil/calendar', 'genutil/simd.h', 'genutil/nearest.h', 'genutil/singleton.h',
              'genutil/version.cpp', 'include/genversion.h',
              'include/genexport.h']),
    ('platform', []),  # the headers of osutil/platform/FAMILY/, see layer_of()
    ('multibyte', ['genutil/mbutil/', 'genutil/jaconv/', 'include/mbutil.h', 'include/mbdetect.h', ':text']),
    ('string', ['genutil/string/', 'include/genstring.h', 'include/gencharacters.h', 'include/genstringio.h',
                'include/ostext.h']),
    ('list', ['genutil/list/', 'include/genlist.h', 'include/genstr.h']),
    ('thread', ['osutil/thread/', 'include/osthread.h', 'include/osguard.h', ':thread']),
    ('diagnostics', ['genutil/diagnostics/', 'include/genassert.h', 'include/gentrace.h',
                     'include/genperf.h', 'include/gendiag.h']),
    ('services', ['osutil/file/', 'osutil/config/', 'osutil/process/', 'osutil/resource/',
                  'osutil/system/', 'include/osfile.h', 'include/osconfig.h',
                  'include/ospreferences.h', 'include/osprocess.h', 'include/osresource.h',
                  'include/osbuildversion.h', 'include/ossystem.h',
                  ':file', ':config', ':process', ':resource', ':system']),
    ('zone', ['genutil/zone/', 'include/gentimezone.h', ':time']),
    ('locale', ['genutil/locale/', 'include/genlocale.h', 'include/gencatalogue.h', ':locale']),
    ('date and number', ['genutil/date/', 'genutil/number/', 'include/gendate.h',
                         'include/gencalendar.h', 'include/genmoment.h', 'include/gentimeofday.h',
                         'include/gennum.h', 'include/gennumholder.h']),
    ('automation', ['osutil/automation/', 'osutil/dde/', 'include/osautomation.h',
                    'include/osolevalue.h', 'include/osdde.h', ':automation', ':dde']),
    ('all', ['include/osutil.h', 'include/genutil.h']),
]
# Headers that use types of their family, and code that both implementations share.
CONTRACTS_IN_FAMILY = ['osutil/platform/resource/modules.h', 'osutil/platform/automation/automation.h',
                       'osutil/platform/file/path_units.h']
UPWARD = {
    # Texts of resource libraries are formats of strings and of trace lines.
    ('genutil/string/format.cpp', 'include/osresource.h'),
    ('genutil/diagnostics/trace.cpp', 'include/osresource.h'),
}

HEADER = re.compile(
    r'#\s*include\s*<(windows|winsock2?|winreg|unistd|pthread|dirent|fcntl|spawn|sys/\w+|unicode/\w+'
    r'|sqlite3|dlfcn|iconv|langinfo)\.h>')
SWITCH = re.compile(r'#\s*(if|ifdef|ifndef|elif)\b.*(_WIN32|_WIN64|__linux__|__unix__|__MINGW)')
# AArch64 intrinsics need no separate pattern, because they require <arm_neon.h>.
VECTOR = re.compile(r'#\s*include\s*<(\w*intrin|arm_\w+)\.h>|\b_mm\d*_|\b__m\d+i?\b')
WINDOWS = re.compile(r'#\s*include\s*<(windows|winsock2?|win\w+)\.h>')
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.MULTILINE)


def layer_of(path):
    """Returns the number of a file's layer, counted from the bottom."""
    name = path
    contract = re.fullmatch(r'osutil/platform/(\w+)/\w+\.(h|cpp|inc)', path)
    side = re.match(r'osutil/platform/(?:posix|win32)/(\w+)/', path)
    if '/fast/' in path:  # the inline functions of the platform layer
        return 1
    if side:
        name = ':' + side.group(1)
    elif path.startswith('osutil/platform/win32/'):
        return 1
    elif contract and contract.group(2) == 'h' and path not in CONTRACTS_IN_FAMILY:
        return 1
    elif contract:
        name = ':' + contract.group(1)
    for number, (_, prefixes) in enumerate(LAYERS):
        if any(name == p if p.startswith(':') else name.startswith(p) for p in prefixes):
            return number
    return None


def includes(path, text):
    """Returns the project's files that a file includes, relative to the root."""
    for name in INCLUDE.findall(text):
        for folder in ('', 'include/', 'osutil/platform/posix/thread/fast/'):
            if (ROOT / (folder + name)).exists():
                yield folder + name
                break
        else:
            yield name


def layer_faults(path, text):
    name = str(path.relative_to(ROOT))
    own = layer_of(name)
    if own is None:
        yield f'{name}: belongs to no layer of tools/check_seam.py'
        return
    for included in includes(path, text):
        other = layer_of(included)
        if other is None:
            yield f'{name}: includes {included}, which belongs to no layer'
        elif other > own and (name, included) not in UPWARD:
            yield f'{name} ({LAYERS[own][0]}) includes {included} ({LAYERS[other][0]}), which is above it'


def loops(graph):
    """Finds groups of files that include each other (Tarjan's algorithm)."""
    index, low, stack, found = {}, {}, [], []

    def visit(node):
        index[node] = low[node] = len(index)
        stack.append(node)
        for other in graph.get(node, ()):
            if other not in index:
                visit(other)
                low[node] = min(low[node], low[other])
            elif other in stack:
                low[node] = min(low[node], index[other])
        if low[node] == index[node]:
            group = [stack.pop()]
            while group[-1] != node:
                group.append(stack.pop())
            if len(group) > 1:
                found.append(sorted(group))

    for node in sorted(graph):
        if node not in index:
            visit(node)
    return found


def lines_with(path, text, *patterns):
    for number, line in enumerate(text.splitlines(), 1):
        if any(pattern.search(line) for pattern in patterns):
            yield f'{path.relative_to(ROOT)}:{number}: {line.strip()}'


def vector_faults():
    for folder in ('include', 'genutil', 'osutil', 'tests', 'bench', 'fuzz', 'tools', 'examples'):
        for path in sorted((ROOT / folder).rglob('*')):
            if path.suffix in ('.h', '.c', '.cpp', '.inc') and path != ROOT / 'genutil/simd.h':
                yield from lines_with(path, path.read_text(encoding='utf-8'), VECTOR)


def main():
    upward, platform, graph = [], [], {}
    for folder in ('include', 'genutil', 'osutil'):
        for path in sorted((ROOT / folder).rglob('*')):
            if path.suffix not in ('.h', '.cpp', '.inc'):
                continue
            text = path.read_text(encoding='utf-8')
            upward += layer_faults(path, text)
            graph[str(path.relative_to(ROOT))] = list(includes(path, text))
            inside = 'osutil/platform/' in str(path)
            if folder != 'include' and not inside:
                platform += lines_with(path, text, HEADER, SWITCH)
            elif 'win32' in path.parts and path.name != 'windows_api.h' and WINDOWS.search(text):
                platform += lines_with(path, text, HEADER, SWITCH)
    upward += ['a loop of includes: ' + ', '.join(group) for group in loops(graph)]
    vector = list(vector_faults())
    for fault in upward + platform + vector:
        print(fault, file=sys.stderr)
    if upward:
        print('error: docs/architecture.md lists the layers from bottom to top; an include points down.',
              file=sys.stderr)
    if platform:
        print('error: platform code belongs in osutil/platform/: add a function to the platform layer.',
              file=sys.stderr)
    if vector:
        print('error: vector instructions belong in genutil/simd.h: add an operation to it.',
              file=sys.stderr)
    return 1 if upward or platform or vector else 0


if __name__ == '__main__':
    sys.exit(main())
