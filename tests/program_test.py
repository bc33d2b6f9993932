#!/usr/bin/env python3
"""Runs the program `genutil` as a user does: program_test.py SCRATCH_FOLDER COMMAND...

COMMAND starts the program; it may have an emulator in front. Starts cost time there, so that each
run checks several things. The scratch folder is made anew.
"""
import json
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import unittest

SCRATCH = pathlib.Path(sys.argv[1])
RESOURCES = SCRATCH.parent / 'resources'
COMMAND = sys.argv[2:]
NATIVE = len(COMMAND) == 1

HOME = dict(os.environ, XDG_CONFIG_HOME=str(SCRATCH.resolve() / 'home'))

TEXT = '東京タワー\n漢字 and ASCII\nかな\n'


def run(*arguments, given=b'', **options):
    done = subprocess.run([*COMMAND, *arguments], input=given, capture_output=True, cwd=SCRATCH,
                          timeout=300, **options)
    # Wine's own remarks are none of the program's.
    err = done.stderr.decode('utf-8', 'replace').replace('\r', '')
    return done.returncode, done.stdout, err


def write(name, content):
    path = SCRATCH / name
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(content)


def read(name):
    return (SCRATCH / name).read_bytes()


class Program(unittest.TestCase):
    def setUp(self):
        shutil.rmtree(SCRATCH, ignore_errors=True)
        SCRATCH.mkdir(parents=True)

    def tearDown(self):
        self.assertEqual(list(SCRATCH.rglob('*.part')), [], 'an unfinished file was left behind')

    def expect(self, got, status, *in_err):
        self.assertEqual(got[0], status, got)
        for part in in_err:
            self.assertIn(part, got[2])
        return got[1]

    @unittest.skipUnless(NATIVE, 'the same on every system')
    def test_help_and_usage(self):
        self.assertIn(b'shift_jis', self.expect(run('--help'), 0))
        self.assertRegex(self.expect(run('--version'), 0), rb'^genutil \d+\.\d+\.\d+\n$')
        self.assertIn(b'--force', self.expect(run('convert', '--help'), 0))
        self.expect(run(), 2)
        self.expect(run('translate'), 2, "unknown command 'translate'")
        self.expect(run('detect', '--fast', 'x'), 2, "unknown option '--fast'")
        self.expect(run('convert', '.'), 2, 'is a folder')

    def test_trace(self):
        write('a.log', b'11/21/26 09:30:12 :: TID 11 :: reader : one : two\n'
                       b'11/21/26 09:30:13 :: TID 12 :: parser : first\n   second\n'
                       b'11/21/26 09:30:15 :: TID 11 :: reader : last')
        write('b.log', b'{"time":"2026-11-21T09:30:12.500+09:00","thread":12,"mask":1,"module":"m\\"x","message":"j"}\n'
                       b'2026-11-21 09:30:14.001 iso\n')
        rows = [  # arguments, the lines shown: by file and number
            (['a.log', 'b.log'], 'a0 b0 a1 a2 b1 a3'),
            (['--module', 'parser', '--module', 'm"x', 'b.log', 'a.log'], 'b0 a1 a2'),
            (['--thread', '12', 'a.log', 'b.log'], 'b0 a1 a2'),
            (['--from', '09:30:13', '--to=2026-11-21 09:30:14', 'a.log', 'b.log'], 'a1 a2 b1'),
            (['--to', '2026-11-20', 'a.log'], ''),
        ]
        lines = {name + str(i): line for name in 'ab' for i, line in enumerate(read(name + '.log').splitlines())}
        for arguments, shown in rows:
            expected = b''.join(lines[line] + b'\n' for line in shown.split())
            self.assertEqual(run('trace', *arguments)[:2], (0 if shown else 1, expected), arguments)
        self.expect(run('trace', '--from', 'today', 'a.log'), 2, "'today' is not a time")
        self.expect(run('trace', 'missing', 'a.log'), 2, 'missing: cannot be read')
        if not NATIVE:
            return
        write('c.log', b'11/21/26 09:30:12 :: m : 1\n')
        with subprocess.Popen([*COMMAND, 'trace', '-f', '--module', 'm', 'c.log'], cwd=SCRATCH,
                              stdout=subprocess.PIPE) as following:
            shown = [following.stdout.readline()]
            for step in '23':  # another line; then a new file in place of the old one
                if step == '3':
                    (SCRATCH / 'c.log').rename(SCRATCH / 'c.log.1')
                with open(SCRATCH / 'c.log', 'ab') as log:
                    log.write(b'TID 5 :: x : no\nTID 5 :: m : %s\n' % step.encode())
                shown.append(following.stdout.readline())
            following.kill()
        self.assertEqual([line.split()[-1] for line in shown], [b'1', b'2', b'3'])

    def test_detect(self):
        rows = [
            ('ascii', b'plain text\n', 'ascii (1.00)'),
            ('empty', b'', 'ascii (1.00)'),
            ('jis', TEXT.encode('iso2022_jp'), 'iso-2022-jp (0.99)'),
            ('euc', TEXT.encode('euc_jp'), 'euc-jp (0.99)'),
            ('sjis', TEXT.encode('cp932'), 'shift_jis (0.99)'),
            ('utf8', TEXT.encode(), 'utf-8 (0.99)'),
            ('mark8', b'\xef\xbb\xbfabc', 'utf-8 with byte-order mark (1.00)'),
            ('mark16', TEXT.encode('utf-16'), 'utf-16 with byte-order mark (1.00)'),
            ('little', (TEXT * 9 + '\a').encode('utf-16-le'), 'utf-16le (0.99)'),
            ('big', TEXT.encode('utf-16-be'), 'utf-16be (0.99)'),
            ('latin', 'déjà vu, où est l’été ?\n'.encode('cp1252'), 'windows-1252 (0.99)'),
        ]
        for name, content, _ in rows:
            write(name, content)
        out = self.expect(run('detect', *[row[0] for row in rows]), 0)
        self.assertEqual(out.decode().splitlines(), [f'{name}: {kind}' for name, _, kind in rows])
        write('nothing', b'\0' * 1000)
        write('short', b'\xb3\xa4')
        write('folder/x', b'')
        files = 'missing', 'folder', 'nothing', '-'
        out = self.expect(run('detect', *files, given=TEXT.encode('euc_jp')), 2,
                          'missing: no such file', 'folder: is a folder')
        self.assertEqual(out, b'nothing: unknown\nstandard input: euc-jp (0.99)\n')
        out = self.expect(run('detect', '--json', 'nothing', 'short', 'utf8'), 1)
        objects = [json.loads(line) for line in out.splitlines()]
        self.assertEqual([o['file'] for o in objects], ['nothing', 'short', 'utf8'])
        self.assertEqual(objects[0]['guesses'], [])
        self.assertIn('euc-jp', [guess['encoding'] for guess in objects[1]['guesses']])
        self.assertEqual(objects[2]['guesses'][0]['evidence'], 'valid UTF-8, 9 multi-byte characters')
        if NATIVE:
            out = self.expect(run('detect', '--all', 'short', 'sjis'), 1).decode()
            self.assertRegex(out, r'(?m)^  0\.\d\d  gb2312 +too short to tell: 1 character')
            self.assertRegex(out, r'(?m)^  0\.99  shift_jis +letters as in Japanese, 9 ')

    def test_convert_refuses_an_uncertain_guess(self):
        write('short', b'\xb3\xa4')
        self.expect(run('convert', '-o', 'out', 'short'), 2, 'short: its encoding is uncertain: ', '--guess')
        self.assertFalse((SCRATCH / 'out').exists())
        self.expect(run('convert', '--guess', '-o', 'out', 'short'), 0, 'short: read as ')
        self.assertTrue((SCRATCH / 'out').exists())

    def test_convert_many(self):
        encodings = {'sjis': 'cp932', 'euc': 'euc_jp', 'jis': 'iso2022_jp', 'utf16': 'utf-16',
                     'big': 'utf-16-be'}
        for name, codec in encodings.items():
            write(f'in/{name}', TEXT.encode(codec))
        write('out/keep', b'')
        files = [f'in/{name}' for name in encodings]
        self.expect(run('convert', '--from=auto', '--to', 'utf-8', '-o', 'out', *files), 0)
        for name in encodings:
            self.assertEqual(read(f'out/{name}').decode(), TEXT, name)
        write('out/sjis', b'precious')
        got = run('convert', '--from', 'auto', '--to', 'cp932', '-o', 'out', *files[:2], 'in/missing')
        self.expect(got, 2, 'out/sjis: exists already; --force replaces it', 'in/missing: no such file')
        self.assertEqual(read('out/sjis'), b'precious')
        self.expect(run('convert', '--from', 'auto', '--to', 'cp932', '-o', 'out', '--force', *files), 0)
        for name in encodings:
            self.assertEqual(read(f'out/{name}').decode('cp932'), TEXT, name)

    def test_convert_one(self):
        got = run('convert', '--from', 'Shift-JIS', '--to', 'euc-jp', '-', given=TEXT.encode('cp932'))
        self.assertEqual(self.expect(got, 0), TEXT.encode('euc_jp'))
        write('marked', b'\xef\xbb\xbf' + TEXT.encode())
        out = self.expect(run('convert', '--from', 'auto', '--to', 'utf-16be', 'marked'), 0)
        self.assertEqual(out, TEXT.encode('utf-16-be'))
        if not NATIVE:
            return
        got = run('convert', '--from', 'auto', '--to', 'utf-16', '-', given=b'\xfe\xff' + out)
        self.assertEqual(self.expect(got, 0), b'\xff\xfe' + TEXT.encode('utf-16-le'))

    @unittest.skipUnless(NATIVE, 'devices and terminals of the system')
    def test_ends_of_the_output(self):
        for arguments in ('--help', '--version', 'zones', 'zones --help', 'detect -'):
            with open('/dev/full', 'wb') as full, open('/dev/null') as nothing:
                got = subprocess.run([*COMMAND, *arguments.split()], stdout=full, stdin=nothing,
                                     stderr=subprocess.PIPE, text=True)
            self.expect((got.returncode, b'', got.stderr), 2, 'standard output cannot be written')

    @unittest.skipUnless(NATIVE, 'devices and terminals of the system')
    def test_terminal(self):
        import pty  # which Windows lacks
        write('large', b'0' * 70000000 + '\n漢字かな'.encode('euc_jp'))
        write('海' * 60, b'x')

        def on_terminal(*arguments, **environment):
            main, side = pty.openpty()
            process = subprocess.Popen([*COMMAND, *arguments], stdin=subprocess.DEVNULL, stdout=side,
                                       stderr=side, cwd=SCRATCH,
                                       env={**HOME, 'TERM': 'xterm', **environment})
            os.close(side)
            shown = b''
            try:
                while part := os.read(main, 65536):
                    shown += part
            except OSError:  # nobody has the other side any more
                pass
            os.close(main)
            return process.wait(), shown.decode()
        status, shown = on_terminal('zones', 'tokyo')
        self.assertRegex(shown, r'^\x1b\[1mNAME .*\x1b\[0m\r\nAsia/')
        for environment in ({'NO_COLOR': '1'}, {'TERM': 'dumb'}):
            self.assertNotIn('\x1b', on_terminal('zones', 'tokyo', **environment)[1])
        self.assertEqual(on_terminal('convert', '-o', 'out', 'none'),
                         (2, '\x1b[1;31mgenutil:\x1b[0m none: no such file\r\n'))
        status, shown = on_terminal('convert', '-o', 'out', 'large')
        self.assertEqual(read('out')[70000000:], '\n漢字かな'.encode())
        for part in ('64 MB of large', 'converting large', 'writing out'):
            self.assertIn(part + '\r', shown)
        self.assertRegex(shown, r'\r +\r$')
        write('out.d/x', b'')  # a folder
        _, shown = on_terminal('convert', '-o', 'out.d', 'large', '海' * 60)
        self.assertIn('[2/2] ' + '海' * 36 + '\r\r' + ' ' * 78 + '\r', shown)

    def test_convert_in_place(self):
        write('d/a', '東é'.encode())
        write('d/sub/b', '海'.encode())
        write('d/c', '漢'.encode())
        convert = ('convert', '--from', 'utf-8', '--to', 'euc-jp')
        self.expect(run(*convert, '-r', '-o', '.', '--force', 'd/c', 'd/sub'), 0)
        self.assertEqual((read('c'), read('b')), ('漢'.encode('euc_jp'), '海'.encode('euc_jp')))
        write('×/×', '海'.encode())  # in the code pages of both users
        self.expect(run(*convert, '-o', '×.out', '×/×'), 0)
        self.expect(run(*convert, '-r', '-i', '×'), 0)
        self.assertEqual((read('×/×'), read('×.out')), ('海'.encode('euc_jp'),) * 2)
        if NATIVE:
            os.chmod(SCRATCH / 'd/sub/b', 0o640)
            os.symlink('d/sub/b', SCRATCH / 'link')
            os.link(SCRATCH / 'd/sub/b', SCRATCH / 'hard')
            self.expect(run(*convert, '--force', '-o', 'link', 'd/c'), 0)
            self.assertTrue((SCRATCH / 'link').is_symlink())
            self.assertEqual(read('d/sub/b'), '漢'.encode('euc_jp'))
            write('d/sub/b', '海'.encode())
            os.link(SCRATCH / 'd/sub/b', SCRATCH / 'hard2')
            os.chmod(SCRATCH / 'd/sub/b', 0o640)
        latin = ('convert', '--from', 'utf-8', '--to', 'latin1', '--in-place')
        self.expect(run(*latin, '-r', 'd'), 2, 'd/a: is unchanged, because characters would be lost')
        self.assertEqual(read('d/a'), '東é'.encode())
        self.expect(run(*latin, '--force', '--escape', 'html', 'd/a'), 1)
        self.assertEqual(read('d/a'), '&#26481;é'.encode('latin1'))
        self.expect(run(*convert, '--in-place', 'link' if NATIVE else 'd/sub/b'), 0)
        self.assertEqual(read('d/sub/b'), '海'.encode('euc_jp'))
        if NATIVE:
            self.assertEqual(read('hard2'), '海'.encode('euc_jp'))
            self.assertEqual(os.stat(SCRATCH / 'd/sub/b').st_mode & 0o777, 0o640)
        write('d/a', b'\xe9')
        if NATIVE:
            os.symlink('a', SCRATCH / 'd/z')
            os.link(SCRATCH / 'd/a', SCRATCH / 'd/hard')
            os.symlink('loop', SCRATCH / 'd/loop')
        self.expect(run('convert', '--from', 'latin1', '--in-place', '-r', 'd', 'd/a', './d/a'), 0)
        self.assertEqual(read('d/a'), 'é'.encode())
        self.expect(run('convert', '--from', 'utf-8', '--to', 'utf-8', '-', given=b'a\xff'), 1)
        self.expect(run('convert', '-r', 'd'), 2, '-r needs --in-place or an output folder')

    def test_convert_reports_losses(self):
        write('in', 'ok é\n東京 😀 é\n'.encode())
        out = self.expect(run('convert', '--from', 'utf-8', '--to', 'sjis', 'in'), 1,
                          'in: 3 characters lost in the conversion from utf-8 to shift_jis',
                          'line 1, column 4 (byte 3): C3 A9  é',
                          'line 2, column 4 (byte 13): F0 9F 98 80  😀',
                          'line 2, column 6 (byte 18): C3 A9  é')
        self.assertEqual(out.decode('cp932'), 'ok 〓\n東京 〓 〓\n')
        if not NATIVE:
            return
        broken = 'é\n'.encode('cp1252') * 9
        got = run('convert', '--from', 'utf-8', '--to', '1252', '-o', 'out', '-', given=broken)
        self.expect(got, 1, 'standard input: 9 characters', 'line 5, column 1 (byte 8): E9', 'and 4 more')
        self.assertEqual(read('out'), b'?\n' * 9)
        got = run('convert', '--from', 'auto', '--to', 'sjis', '-', given=b'\xef\xbb\xbfz\xc3\xa9')
        self.expect(got, 1, 'line 1, column 2 (byte 4): C3 A9')

    @unittest.skipUnless(NATIVE, 'the same on every system')
    def test_convert_refuses(self):
        write('a/x', b'1')
        write('b/x', b'2')
        write('euc', '海'.encode('euc_jp'))
        convert = ('convert', '--from', 'utf-8', '--to')
        self.expect(run(*convert, 'klingon', 'a/x'), 2, "unknown encoding 'klingon'", 'shift_jis')
        self.expect(run(*convert, 'sjis', 'a/x', 'b/x'), 2, 'several files need an output folder: -o FOLDER')
        self.expect(run(*convert, 'sjis', '-o', 'a', 'a/x', 'b/x'), 2, 'a/x and b/x would both be written to')
        self.expect(run(*convert, 'sjis', '-o', 'none/y', 'a/x'), 2, 'none/y: cannot be written')
        self.expect(run('convert', '--from', 'auto', '--to', 'utf-8', '-o', 'euc', 'euc'), 2,
                    'euc: exists already')
        self.assertEqual(read('euc'), '海'.encode('euc_jp'))

    @unittest.skipUnless(NATIVE, 'limits of the system')
    def test_failed_write_leaves_nothing(self):
        import resource

        def limit():
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_FSIZE, (4096, 4096))

        write('in', TEXT.encode() * 1000)
        write('old', b'precious')
        for out in ('new', 'old'):
            got = run('convert', '--from', 'utf-8', '--to', 'sjis', '--force', '-o', out, 'in',
                      preexec_fn=limit)
            self.expect(got, 2, f'{out}: cannot be written')
        self.assertEqual(sorted(os.listdir(SCRATCH)), ['in', 'old'])
        self.assertEqual(read('old'), b'precious')
        self.expect(run('convert', '--from', 'utf-8', '--to', 'sjis', '-o', '/dev/full', 'in'), 2,
                    '/dev/full: cannot be written')
        with open('/dev/full', 'wb') as full:
            done = subprocess.run([*COMMAND, 'detect', 'in'], cwd=SCRATCH, stdout=full,
                                  stderr=subprocess.PIPE)
        self.assertEqual(done.returncode, 2)
        self.assertIn(b'standard output cannot be written', done.stderr)

    def test_text(self):
        write('sjis', '東京ｱbc\r\nかな'.encode('cp932'))
        write('bad', b'ab\n\x82\xa0\x82 \x82')
        out = self.expect(run('text', '--show', '3', '--code-set', 'sjis', 'sjis', 'bad'), 1).decode()
        for line in ('sjis', '  code set      shift_jis', '  bytes         13', '  characters    9',
                     '  lines         2', '  of 1 byte     5', '  of 2 bytes    4', '  invalid       0',
                     '        0  93 8C        U+6771      東', '        2  B1           U+FF71      ｱ',
                     'bad', '  invalid       2', '    line 2, column 2 (byte 5): 82',
                     '    line 2, column 4 (byte 7): 82', '        2  0A           U+000A      \\n'):
            self.assertIn(line, out.splitlines())
        write('utf8', 'é😀\n'.encode() + b'\xe3\x81')
        write('jis', '東a'.encode('iso2022_jp'))
        write('utf16', '\r\n😀'.encode('utf-16'))
        out = self.expect(run('text', '--show=9', 'utf8', 'jis', 'utf16'), 1).decode().splitlines()
        for line in ('  code set      utf-8 (detected)', '        1  F0 9F 98 80  U+1F600     😀',
                     '        3  E3 81        invalid', '        0  45 6C        U+6771      東',
                     '        1  61           U+0061      a', '        2  3D D8 00 DE  U+1F600     😀'):
            self.assertIn(line, out)
        if NATIVE:
            self.expect(run('text', '--show', 'many', 'utf8'), 2, "'many' is not a number")

    def test_show(self):
        out = self.expect(run('show', '--zone', 'Asia/Tokyo', '--time', '1269093600'), 0).decode()
        lines = out.splitlines()
        self.assertEqual(lines[0], '2010-03-20T23:00:00+09:00 in Asia/Tokyo, '
                                   '1269093600 seconds since 1970')
        self.assertEqual(lines[-1], '42 texts, each read back to the same value')
        for text in ('en_US    the same   Saturday, March 20, 2010 11:00:00 PM',
                     'de_DE    the same   Samstag, 20. März 2010 23:00:00',
                     '-1.234.567,89', '9.876.543,21 EUR', '平成22'):
            self.assertIn(text, out)
        for arguments, word in ((('--locale', 'xx_XX'), "locale 'xx_XX'"), (('--zone', 'Nowhere/X'), 'zone'),
                                (('--time', 'soon'), 'seconds'), (('--time', '-1'), 'seconds'),
                                (('--time', '2147483648'), 'seconds'), (('here',), "'here'")):
            if NATIVE or arguments[0] == '--locale':
                self.expect(run('show', *arguments), 2, word)

    def test_read(self):
        rows = {'3/20/2010 11 pm': '2010-03-20T23:00:00+09:00 in Asia/Tokyo, 1269093600 seconds since 1970',
                'Sat, 20 Mar 2010 14:00:00 GMT': '2010-03-20T23:00:00+09:00 in Asia/Tokyo, '
                                                 '1269093600 seconds since 1970',
                '20 Mars 2010': 'not read: no date is recognised, at character 4',
                '2/30/2010': 'not read: there is no such date, at character 1',
                '3/20/2010, x': 'not read: the text after the date is not a time, at character 12',
                '3/20/2010 25:00': 'not read: the time is out of range, at character 11',
                '1/1/1969': 'not read: there is no such moment between 1970 and 18 January 2038 '
                            'in this zone, at character 1'}
        out = self.expect(run('read', '--zone', 'Asia/Tokyo', *rows), 1).decode()
        self.assertEqual(out.splitlines(), [f'{text}: {result}' for text, result in rows.items()])
        if NATIVE:
            got = run('read', '--locale=ja', '--zone', 'Asia/Tokyo', '平成２２年３月２０日（土）午後１１時')
            self.assertIn(b'1269093600', self.expect(got, 0))
            self.assertIn(b'at character 3', self.expect(run('read', '1 日 2010'), 1))
            self.expect(run('read'), 2, 'give a date')
            self.expect(run('read', '--locale', 'xx', 'x'), 2, "'xx'")

    def test_automation(self):
        self.expect(run('automation', 'list'), 2, 'is needed')
        if NATIVE:
            self.expect(run('automation', 'list', 'Scripting.Dictionary'), 2, 'is not available')
            self.expect(run('automation', 'call', 'X', 'Y', 'Z'), 2, 'is not available')
            return
        out = self.expect(run('automation', 'list', 'Scripting.Dictionary'), 0).decode()
        self.assertRegex(out, r'method Add\(ref Key: value, ref Item: value\): void\n')
        self.assertRegex(out, r'get    Count\(\): long\n')
        call = ['automation', 'call', 'Scripting.FileSystemObject']
        self.assertEqual(self.expect(run(*call, 'BuildPath', 'c:\\a b', 'text:x:y'), 0), b'c:\\a b\\x:y\n')
        self.assertEqual(self.expect(run(*call, 'GetFolder', 'c:\\windows'), 0), b'(object)\n')
        self.expect(run(*call, 'GetBaseName', 'integer:x'), 2, "'integer:x'")
        self.expect(run(*call, 'NoSuch', '--named', 'a=1'), 2, "'NoSuch' (0x80020006)")
        self.expect(run('automation', 'call', 'No.Such', 'x'), 2, "'No.Such' (0x800401F3)")
        self.expect(run('automation', 'list', 'Scripting.Dictionary', '--attach'), 2, '0x800401E3')

    def test_resources(self):
        for name in ('texts', 'other'):
            write(f'{name}.dll', (RESOURCES / f'{name}.dll').read_bytes())
        write('damaged.dll', read('texts.dll')[:300])
        out = self.expect(run('version', 'texts.dll', 'other.dll'), 1, 'other.dll has no readable version')
        self.assertEqual(out.decode().splitlines(),
                         ['texts.dll', '  version   7.6.4.2', '  text      "Version 7.6.04  002 "',
                          '  language  0x0411'])
        out = self.expect(run('message', 'texts.dll', '1202', '17', '65535'), 1, 'has no message 17')
        self.assertEqual(out.decode().splitlines(), ['日本 한국', 'the last of all'])
        if NATIVE:
            self.expect(run('version', 'missing.dll', 'texts.dll'), 2, 'missing.dll is not a readable file')
            self.expect(run('version', 'damaged.dll'), 1, 'damaged.dll has no readable version')
            self.expect(run('version'), 2, 'name a program')
            self.expect(run('message', 'damaged.dll', '1'), 2, 'not a readable resource library')
            self.expect(run('message', 'texts.dll', 'x1'), 2, "'x1' is not a message number")
            self.expect(run('message', 'texts.dll', '65536'), 2, "'65536' is not a message number")
            self.expect(run('message', 'texts.dll'), 2, 'number')

    def test_config(self):
        write('app.ini', b'; tour\r\n[Screen]\r\nWidth = 80\r\n\r\n[Other]\r\nk=1\r\n')
        self.expect(run('config', 'set', 'app.ini', 'screen', 'Height', '25'), 0)
        self.assertEqual(self.expect(run('config', 'get', 'app.ini', 'SCREEN', 'width'), 0), b'80\n')
        self.assertEqual(self.expect(run('config', 'list', 'app.ini', 'Screen'), 0).split(),
                         [b'Width', b'=', b'80', b'Height=25'] if NATIVE else [b'Width=80', b'Height=25'])
        self.expect(run('config', 'delete', 'app.ini', 'Screen', 'Width'), 0)
        self.expect(run('config', 'get', 'app.ini', 'Screen', 'Width'), 1, "no value 'Width'")
        self.assertIn(b'[Other]\r\nk=1\r\n', read('app.ini'))
        registry = ('--registry', 'Software\\genutil program test', 'sub')
        self.expect(run('config', 'set', *registry, 'Name', '東京' if NATIVE else 'Kyoto', env=HOME), 0)
        self.assertEqual(self.expect(run('config', 'list', *registry, env=HOME), 0).decode(),
                         'Name=東京\n' if NATIVE else 'Name=Kyoto\n')
        self.expect(run('config', 'set', *registry, 'name', 'x' * 1024, env=HOME), 2, 'at most 1023')
        self.expect(run('config', 'delete', *registry, 'name', env=HOME), 0)
        self.expect(run('config', 'set', 'app.ini', 'Other', 'k', '-5'), 0)
        self.assertEqual(self.expect(run('config', 'get', 'app.ini', 'Other', 'k'), 0), b'-5\n')
        self.expect(run('config', 'set', 'app.ini', 'Other', 'k', '1'), 0)
        if NATIVE:
            self.assertEqual(read('app.ini'), b'; tour\r\n[Screen]\r\nHeight=25\r\n\r\n[Other]\r\nk=1\r\n')
            self.expect(run('config', 'get', *registry, 'name', env=HOME), 1, "no value 'name'")
            self.expect(run('config', 'set', 'app.ini', 'a', 'k', 'two\nlines'), 2, 'cannot be written')
            self.expect(run('config', 'set', 'app.ini', 'a', 'k', ' "x" '), 1, "read back as 'x'")
            self.expect(run('config', 'list', 'none.ini', 'a'), 2, 'no such file')
            self.expect(run('config', 'list', 'app.ini', 'x'), 1, 'nothing there')
            self.expect(run('config', 'get', 'app.ini', 'x'), 2, 'give FILE SECTION KEY')
            self.expect(run('config', 'put'), 2, 'get, set, delete or list')
            write('app.ini', b'[a]\nk=1\nk=1\n')
            for status in (0, 0, 1):
                self.expect(run('config', 'delete', 'app.ini', 'a', 'k'), status)

    def test_locale(self):
        out = self.expect(run('locale', 'fr', 'JA_jp.eucJP'), 0).decode().splitlines()
        for line in ('name                   fr_FR', 'identifier             0x040c',
                     'short date             "dd/MM/yyyy"', 'digits in group        "3;0"',
                     'months                 janvier, février, mars, avril, mai, juin, juillet, août, '
                     'septembre, octobre, novembre, décembre', '', 'name                   ja_JP',
                     'encoding               shift_jis', 'after noon             "午後"',
                     'era                    平成'):
            self.assertIn(line, out)
        self.assertEqual(len(out), 2 * 27 + 1)
        self.expect(run('locale', 'xx', 'en_US'), 2, "locale 'xx' is not known")
        self.expect(run('locale'), 2, 'name a locale')

    def test_dde(self):
        # There is no screen either, where the program runs in the emulator.
        got = run('dde', 'NoSuchService', 'topic', '[command]')
        self.expect(got, 2 if NATIVE else 1, 'not available' if NATIVE else 'no program answers')
        if NATIVE:
            self.expect(run('dde', 'service', 'topic'), 2, 'name a service')
            self.expect(run('dde', '--timeout', '-1', 'a', 'b', 'c'), 2, 'seconds')


if __name__ == '__main__':
    unittest.main(argv=sys.argv[:1])
