#!/usr/bin/env python3
"""Installs the library and uses it as its users do: install_test.py TREE BUILD SCRATCH [EMULATOR]

Builds the programs of examples/ against the installed library, by find_package and (if there is no
emulator) by pkg-config, runs them and compares their output. Without an emulator, builds the consumer of
tests/consumers/ in every other way that users build. Checks the contents of the packages.
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import unittest
import zipfile

TREE, BUILD, SCRATCH = map(pathlib.Path, sys.argv[1:4])
EMULATOR = sys.argv[4:]
CACHE = (BUILD / 'CMakeCache.txt').read_text()
STATIC = 'GENUTIL_SHARED:BOOL=OFF' in CACHE
TOOLCHAIN = re.findall('^CMAKE_TOOLCHAIN_FILE:.*?=(.*)$', CACHE, re.MULTILINE)
PREFIX = SCRATCH / 'prefix'


def run(*command, **options):
    done = subprocess.run([str(part) for part in command], capture_output=True, timeout=300, **options)
    assert done.returncode == 0, f'{command}\n{done.stdout.decode()}\n{done.stderr.decode()}'
    return done.stdout.replace(b'\r', b'').decode()


# The emulator's formats of dates are not quite those of the system.
def comparable(text):
    return [line for line in text.splitlines() if not (EMULATOR and '2025' in line)]


class Installed(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        shutil.rmtree(SCRATCH, ignore_errors=True)
        run('cmake', '--install', BUILD, '--prefix', SCRATCH / 'first')
        # An installed tree can be moved as a whole.
        (SCRATCH / 'first').rename(PREFIX)

    def check(self, folder):
        for expected in sorted((TREE / 'examples/output').iterdir()):
            suffix = '.exe' if EMULATOR else ''
            printed = run(*EMULATOR, folder / (expected.stem + suffix))
            self.assertEqual(comparable(printed), comparable(expected.read_text(encoding='utf-8')))

    def test_examples_by_find_package(self):
        build = SCRATCH / 'examples'
        options = [f'-DCMAKE_PREFIX_PATH={PREFIX}', f'-DCMAKE_FIND_ROOT_PATH={PREFIX}']
        if EMULATOR:
            options.append(f'-DCMAKE_TOOLCHAIN_FILE={TOOLCHAIN[-1]}')
        run('cmake', '-G', 'Ninja', '-S', TREE / 'examples', '-B', build, *options)
        run('cmake', '--build', build)
        if EMULATOR:
            shutil.copy(PREFIX / 'bin/genutil.dll', build)
        self.check(build)
        program = PREFIX / ('bin/genutil.exe' if EMULATOR else 'bin/genutil')
        self.assertRegex(run(*EMULATOR, program, '--version'), r'^genutil 1\.')
        if not EMULATOR:
            self.assertIn('.SH convert', (PREFIX / 'share/man/man1/genutil.1').read_text())
            complete = 'source share/bash-completion/completions/genutil; COMP_CWORD=2;' \
                       'COMP_WORDS=(genutil convert --f); _genutil; echo ${COMPREPLY[@]}'
            self.assertEqual(run('bash', '-c', complete, cwd=PREFIX), '--force --from\n')

    @unittest.skipIf(EMULATOR, 'the tool of this system only')
    def test_examples_by_pkg_config(self):
        pc = next(PREFIX.rglob('genutil.pc')).parent
        flags = run('pkg-config', '--cflags', '--libs', 'genutil',
                    env={'PATH': '/usr/bin:/bin', 'PKG_CONFIG_PATH': str(pc)}).split()
        out = SCRATCH / 'by-pkg-config'
        out.mkdir()
        libraries = f'-Wl,-rpath,{pc.parent}'
        for source in sorted((TREE / 'examples').glob('*.c*')):
            compiler = ['cc', '-std=c99'] if source.suffix == '.c' else ['c++', '-std=c++17']
            run(*compiler, source, '-o', out / source.stem, *flags, libraries)
        self.check(out)

    @unittest.skipIf(EMULATOR, 'the tools of this system only')
    def test_consumers(self):
        source = TREE / 'tests/consumers'
        pc = next(PREFIX.rglob('genutil.pc')).parent
        environment = dict(os.environ, PKG_CONFIG_PATH=str(pc), LD_LIBRARY_PATH=str(pc.parent),
                           SOURCES=str(source))
        ways = {
            'subdirectory': [['cmake', '-G', 'Ninja', '-S', source, '-B', '.', f'-DGENUTIL_TREE={TREE}'],
                             ['cmake', '--build', '.', '-j2']],
            'meson': [['meson', 'setup', '.', source], ['ninja']],
            'makefile': [['make', '-f', source / 'Makefile']],
            'clang': [['make', '-f', source / 'Makefile', 'CXX=clang++', 'CXXFLAGS=-Wall -Wextra -Werror']],
        }
        for way, commands in ways.items():
            with self.subTest(way):
                folder = SCRATCH / way
                folder.mkdir()
                for command in commands:
                    run(*command, cwd=folder, env=environment)
                self.assertEqual(run(folder / 'consumer', env=environment),
                                 '2 characters, decimal symbol ,\n')

    @unittest.skipIf(STATIC, 'packages hold a shared library')
    def test_packages(self):
        folder = SCRATCH / 'packages'
        run('cpack', '--config', BUILD / 'CPackConfig.cmake', '-B', folder)
        if EMULATOR:
            archive, = folder.glob('*.zip')
            names = ' '.join(zipfile.ZipFile(archive).namelist())
            for part in ('bin/genutil.dll', 'lib/libgenutil.dll.a', 'include/genutil/genstr.h',
                         'bin/genutil.exe', 'bin/ResDLLs/0011/genmsg.dll'):
                self.assertIn(part, names)
            return
        parts = {'libgenutil1_': 'libgenutil.so.1.', 'libgenutil-dev_': 'include/genutil/genstr.h',
                 'genutil_': 'bin/genutil'}
        for package, part in parts.items():
            archive, = folder.glob(package + '*.deb')
            names = run('dpkg-deb', '-c', archive)
            self.assertEqual('/ResDLLs/0011/genmsg.dll' in names, package == 'libgenutil1_')
            for other in parts.values():
                self.assertEqual(other in names, other == part, (package, other))
            self.assertIn('libgenutil1 (=' if package != 'libgenutil1_' else 'libicu',
                          run('dpkg-deb', '-f', archive, 'Depends'))


if __name__ == '__main__':
    unittest.main(argv=sys.argv[:1], verbosity=1)
