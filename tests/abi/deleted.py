#!/usr/bin/env python3
"""Expressions with a CGNString that must not compile: deleted.py INCLUDE COMPILER"""
import concurrent.futures
import subprocess
import sys

INCLUDE, COMPILER = sys.argv[1:3]
GOOD = ['f(s)', "s += 'a'", 's += static_cast<unsigned char>(65)', 'if (s[0]) f(CGNString("x"))', 'b = s == "x"', 'b = std::string_view("a") == "x" && std::string("a") < "x"',
        'std::map<CGNString, int, CGNStringLess> m; m[s]++']
BAD = ['delete s', 's += 5', 's += 5u', 's += 1.5', 'f(s + 1)', 'f(1 + s)', 'b = s < s', 'b = s >= "x"',
       'CGNString("x").Characters()', 'b = "x" < s', 'b = s > std::string("x")', 'b = (s <=> s) < 0', 'std::map<CGNString, int> m; m[s]++']
PROGRAM = """#include <compare>
#include <map>
#include <string>
#include "genstring.h"
void f(const void*);
void test(CGNString& s, bool& b) { (void)s, (void)b; %s; }
"""


def compiles(expression):
    return subprocess.run([COMPILER, '-std=c++20', '-fsyntax-only', '-x', 'c++', f'-I{INCLUDE}', '-'],
                          input=PROGRAM % expression, text=True, capture_output=True).returncode == 0


with concurrent.futures.ThreadPoolExecutor(2) as pool:
    results = dict(zip(GOOD + BAD, pool.map(compiles, GOOD + BAD)))
wrong = [e for e in GOOD if not results[e]] + [e for e in BAD if results[e]]
for expression in wrong:
    print('compiles:' if results[expression] else 'does not compile:', expression)
sys.exit(bool(wrong))
