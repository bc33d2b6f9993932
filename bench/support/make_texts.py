#!/usr/bin/env python3
"""Writes the texts for measurements to a folder, one file for each encoding, with its name in iconv.
pages.* are the Japanese manual pages of this machine (apt-get install manpages-ja), messages.* the
messages of its programs in Traditional Chinese.

  make_texts.py FOLDER
"""
import glob
import gzip
import struct
import subprocess
import sys


def iconv(to, source, text):
    """Returns the text in another encoding, without characters that do not convert."""
    return subprocess.run(["iconv", "-c", "-f", source, "-t", to], input=text,
                          stdout=subprocess.PIPE, check=False).stdout


def messages(catalogue):
    """Returns the translations in a gettext catalogue: N of (length, offset) at the offset in word 4."""
    count, table = struct.unpack_from("<8xI4xI", catalogue)
    entries = struct.iter_unpack("<II", catalogue[table:table + 8 * count])
    return b"\n".join(catalogue[at:at + length] for length, at in entries) + b"\n"


def write(folder, name, text):
    with open(f"{folder}/{name}", "wb") as file:
        file.write(text)


def main():
    folder = sys.argv[1]
    pages = b"".join(gzip.open(path).read()
                     for path in sorted(glob.glob("/usr/share/man/ja/**/*.gz", recursive=True)))
    if len(pages) < 1000000:
        sys.exit("no Japanese manual pages: apt-get install manpages-ja")
    # Without characters that JIS lacks, so that all Japanese encodings contain the same text.
    pages = iconv("UTF-8", "ISO-2022-JP", iconv("ISO-2022-JP", "UTF-8", pages))
    for encoding in ("UTF-8", "ISO-2022-JP", "EUC-JP", "SHIFT_JIS", "BIG5", "CP949"):
        write(folder, "pages." + encoding, iconv(encoding, "UTF-8", pages))
    chinese = b"".join(messages(open(path, "rb").read())
                       for path in sorted(glob.glob("/usr/share/locale/zh_TW/LC_MESSAGES/*.mo")))
    euc = iconv("EUC-TW", "UTF-8", chinese)
    big5 = iconv("BIG5", "EUC-TW", euc)
    write(folder, "messages.BIG5", big5)
    write(folder, "messages.EUC-TW", iconv("EUC-TW", "BIG5", big5))


main()
