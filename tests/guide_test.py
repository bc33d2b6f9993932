#!/usr/bin/env python3
"""The programs of the guide are built and print what it says: guide_test.py TREE BUILD SCRATCH [--record]

A page has a block ```cpp with a whole program, and behind it a block ```text with what it prints.
--record writes what they print into the pages.
"""
import concurrent.futures
import difflib
import os
import pathlib
import re
import shutil
import subprocess
import sys

TREE, BUILD, SCRATCH = map(pathlib.Path, sys.argv[1:4])
RECORD = '--record' in sys.argv
BLOCKS = re.compile(r'```cpp\n(.*?)```\n.*?```text\n(.*?)```\n', re.S)


def prints(page):
    source, _ = BLOCKS.search(page.read_text(encoding='utf-8')).groups()
    folder = SCRATCH / page.stem
    folder.mkdir(parents=True)
    (folder / 'main.cpp').write_text(source, encoding='utf-8')
    subprocess.run(['c++', '-std=c++17', '-Wall', '-Wextra', '-Wpedantic', '-Werror', f'-I{TREE}/include', 'main.cpp',
                    '-o', 'main', f'-L{BUILD}', '-lgenutil', f'-Wl,-rpath,{BUILD}'], cwd=folder, check=True)
    environment = {**os.environ, 'LC_ALL': 'en_US.UTF-8', 'TZ': 'UTC', 'XDG_CONFIG_HOME': str(folder)}
    return subprocess.run(['./main'], cwd=folder, check=True, capture_output=True, timeout=60,
                          env=environment).stdout.decode()


def check(page):
    printed = prints(page)
    text = page.read_text(encoding='utf-8')
    match = BLOCKS.search(text)
    if RECORD:
        page.write_text(text[:match.start(2)] + printed + text[match.end(2):], encoding='utf-8')
        return True
    for line in difflib.unified_diff(match[2].splitlines(), printed.splitlines(), str(page), 'printed', lineterm=''):
        print(line)
    return printed == match[2]


shutil.rmtree(SCRATCH, ignore_errors=True)
pages = [page for page in sorted((TREE / 'docs/guide').glob('*.md')) if BLOCKS.search(page.read_text())]
with concurrent.futures.ThreadPoolExecutor(2) as pool:
    results = list(pool.map(check, pages))
print(f'{sum(results)} of {len(pages)} pages print what they say')
sys.exit(not all(results) or not pages)
