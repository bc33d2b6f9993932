#!/usr/bin/env python3
"""Compiles the exported headers as strangers' programs do: headers_test.py TREE CXX CC

Beside the macros of other libraries, before and after the system's headers, with strict warnings, in each
standard of C++, without exceptions, and in C.
"""
import pathlib
import subprocess
import sys
import unittest

TREE, CXX, CC = pathlib.Path(sys.argv[1]), sys.argv[2], sys.argv[3]
WINDOWS = 'mingw' in CXX
HEADERS = sorted(path.name for path in (TREE / 'include').glob('*.h'))
ALL = '#include <genutil.h>\n'
C_HEADERS = '#include <mbdetect.h>\n#include <genlist.h>\n#include <genversion.h>\n'
STRICT = ['-Wall', '-Wextra', '-pedantic', '-Wconversion', '-Wshadow', '-Wold-style-cast',
          '-Wnon-virtual-dtor', '-Wundef', '-Werror']
# The macros of toolkits that take ordinary words.
QT = ''.join(f'#define {word}\n' for word in ('signals', 'slots', 'emit', 'Q_OBJECT')) + \
     '#define foreach(a, b) for (a : b)\n#define forever for (;;)\n'
X11 = ''.join(f'#define {word} {number}\n' for number, word in enumerate(
    ('None', 'Bool', 'Status', 'True', 'False', 'Always', 'Success', 'Above', 'Below', 'Unsorted', 'Complex')))


class Headers(unittest.TestCase):
    def compiles(self, text, *options, compiler=CXX, language='c++'):
        done = subprocess.run([compiler, '-x', language, '-fsyntax-only', f'-I{TREE}/include', *options, '-'],
                              input=text, capture_output=True, text=True, timeout=120)
        self.assertEqual(done.returncode, 0, f'{options}\n{text}\n{done.stderr[:4000]}')

    def test_each_header_alone(self):
        for name in HEADERS:
            with self.subTest(name):
                self.compiles(f'#include <{name}>\n#include <{name}>\n', '-std=c++17', *STRICT)

    def test_in_every_standard(self):
        for standard in 'c++17', 'c++20', 'c++2b', 'gnu++17':
            with self.subTest(standard):
                self.compiles(ALL, f'-std={standard}', *STRICT)
        self.compiles(ALL, '-std=c++17', '-fno-exceptions', '-fno-rtti', '-funsigned-char', *STRICT)

    def test_older_standards_are_told_apart(self):
        done = subprocess.run([CXX, '-x', 'c++', '-fsyntax-only', '-std=c++14', f'-I{TREE}/include', '-'],
                              input=ALL, capture_output=True, text=True)
        self.assertIn('genutil needs C++17', done.stderr)

    def test_in_c(self):
        for standard in 'c99', 'c11', 'gnu17':
            with self.subTest(standard):
                self.compiles(C_HEADERS, f'-std={standard}', '-Wall', '-Wextra', '-pedantic', '-Wconversion',
                              '-Wstrict-prototypes', '-Werror', compiler=CC, language='c')

    def test_beside_other_libraries(self):
        for name, macros in ('Qt', QT), ('X11', X11):
            with self.subTest(name):
                self.compiles(macros + ALL, '-std=c++17')
                self.compiles(ALL + macros, '-std=c++17')

    @unittest.skipUnless(WINDOWS, 'the headers of Windows')
    def test_beside_windows(self):
        for unicode in [], ['-DUNICODE', '-D_UNICODE']:
            for lean in [], ['-DWIN32_LEAN_AND_MEAN', '-DNOMINMAX']:
                options = ['-std=c++17', '-msse2', '-Werror', *unicode, *lean]
                with self.subTest(options):
                    self.compiles('#include <windows.h>\n#include <ole2.h>\n' + ALL, *options)
                    self.compiles(ALL + '#include <windows.h>\n#include <ole2.h>\n', *options)


if __name__ == '__main__':
    unittest.main(argv=sys.argv[:1], verbosity=1)
