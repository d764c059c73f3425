#!/usr/bin/env python3
# SPDX-FileCopyrightText: The Vexta authors
# SPDX-License-Identifier: Apache-2.0
"""Writes the seeds of fastq_pairs_fuzz and gzip_fuzz into fuzz/corpus.

These two read choices out of their bytes; the functions here spell them as the sources read them.
The same files each time. Usage: fuzz/make_reading_corpora.py
"""
import gzip
import pathlib
import zlib

CORPUS = pathlib.Path(__file__).parent / "corpus"


def write(target, name, data):
    directory = CORPUS / target
    directory.mkdir(parents=True, exist_ok=True)
    (directory / name).write_bytes(data)


def two_bytes(number):
    return number.to_bytes(2, "big")


# --- Pairs of FASTQ files

COUNTS = [1, 2, 500, 999, 1000, 1001, 2000]
REPEATS = [2, 250, 1001, 4004]


def ways(block=0, piece=0, more_threads=0, whole_run=1):
    return bytes([block, piece, more_threads, whole_run])


def records(count, length, unit=b"", tail=0, length2=None):
    second = b"\x00" if length2 is None else bytes([1, length2])
    return (bytes([0, COUNTS.index(count), length]) + second + bytes([len(unit)]) + unit +
            bytes([tail]))


def in_both(data):
    return bytes([2, len(data)]) + data


def in_file(file, data):
    return bytes([3, file, len(data)]) + data


def spoilt(file, from_end, change):
    return bytes([4, file]) + two_bytes(from_end) + bytes(change)


def repeated(unit, count):
    return bytes([5, len(unit)]) + unit + bytes([REPEATS.index(count)])


def fastq_pairs():
    record = b"@X 1\nACGT\n+\nIIII\n"
    yield "few", ways() + in_both(record) + in_both(record)
    yield "batch", ways(1, 1, 1) + records(1000, 40) + records(2, 40)
    yield "batches", ways(2, 2, 2) + records(2000, 36, b"N", 2, length2=50)
    yield "shapes", ways(3, 3, 1) + records(500, 40) + records(500, 41) + records(999, 0, tail=1)
    yield "odd_end", ways(1, 0, 2) + records(2000, 33) + spoilt(0, 3000, [0, 1])
    yield "long_line", ways(1, 0, 1) + records(2000, 64) + spoilt(1, 4000, [1, 4, 0])
    yield "nul", ways(0, 2, 1) + records(2000, 64) + spoilt(0, 4000, [1, 0, 1])
    yield "cut", ways(2, 1, 2) + records(1001, 63) + spoilt(1, 50, [3])
    yield "differing", ways(1, 1, 1) + records(1000, 32) + in_file(0, record) + records(1000, 32)
    yield "surplus", ways() + records(1000, 32) + in_file(0, record * 3) + in_file(0, b"@")
    yield "crlf", ways(1, 1, 1) + repeated(b"@X\r\nACGT\r\n+\r\nIIII\r\n", 1001)
    yield "lone_cr", ways(3, 3) + records(1000, 32) + repeated(b"@X\rACGT\r+\rIIII\r", 250)
    yield "empty_lines", ways() + records(999, 32) + in_both(b"\n\n\n\n") + records(1000, 32)
    yield "tabs", ways(1, 1, 1) + records(1000, 50, tail=4) + records(1001, 50, tail=3)
    yield "headers", ways(1, 1, 1) + in_file(0, b"@X\nA\n+\nI\n") + in_file(1, b"@X 2\nA\n+\nI\n")


# --- Gzip files

MEMBER_REPEATS = [1, 2, 100, 1000]
ZEROS = [1, 2, 7, 8, 512, 65536]
GZIP_WAYS = bytes([1, 1, 1, 2, 0, 0, 3, 0])


def as_it_is(data):
    return GZIP_WAYS + b"\x01" + data


def made(*parts):
    return GZIP_WAYS + b"\x00" + b"".join(parts)


def raw_deflate(text, level=9, strategy=zlib.Z_DEFAULT_STRATEGY):
    packer = zlib.compressobj(level, zlib.DEFLATED, -15, 8, strategy)
    return packer.compress(text) + packer.flush()


def around(data, flags=0, fields=b""):
    return b"\x00" + two_bytes(len(data)) + data + bytes([flags]) + fields


def member(unit, repeats, level):
    return b"\x01" + two_bytes(len(unit)) + unit + bytes([MEMBER_REPEATS.index(repeats), level])


def zeros(count):
    return bytes([2, ZEROS.index(count)])


def appended(data):
    return bytes([3, len(data)]) + data


def flipped(from_end, bit):
    return b"\x04" + two_bytes(from_end) + bytes([bit])


def cut(count):
    return b"\x05" + two_bytes(count)


def gzip_files():
    text = b"@X 1:N:0:1\nACGTACGTTTGGCCAANNACGT\n+\nIIIIFFFFIIII##IIIIIIII\n"
    packed = gzip.compress(text, mtime=0)
    yield "member", as_it_is(packed)
    yield "members", as_it_is(packed + gzip.compress(b"", mtime=0) + packed)
    yield "padded", as_it_is(packed + bytes(20) + packed + bytes(3))
    yield "trailing", as_it_is(packed + b"trailing")
    yield "plain", as_it_is(text)
    yield "empty", as_it_is(b"")
    for name, strategy in [("dynamic", zlib.Z_DEFAULT_STRATEGY), ("fixed", zlib.Z_FIXED),
                           ("huffman", zlib.Z_HUFFMAN_ONLY), ("runs", zlib.Z_RLE)]:
        yield name, made(around(raw_deflate(text * 3, 9, strategy)))
    yield "stored", made(around(raw_deflate(text, 0)))
    fields = two_bytes(3) + b"abc" + b"\x02nm" + b"\x01c"
    yield "fields", made(around(raw_deflate(text), 4 | 8 | 16 | 2, fields))
    yield "large", made(member(text, 1000, 1), member(text[:20], 1000, 9), member(text, 100, 0))
    yield "between", made(member(text, 1, 6), zeros(65536), member(text, 2, 6), zeros(1))
    yield "odd_tail", made(member(text, 1, 6), zeros(8), appended(b"\x1f\x8b"))
    yield "flipped", made(member(text, 100, 6), member(text, 2, 6), flipped(60, 3))
    yield "cut", made(member(text, 100, 6), member(text, 2, 6), cut(30))


def main():
    for name, data in fastq_pairs():
        write("fastq_pairs", name, data)
    for name, data in gzip_files():
        write("gzip", name, data)


if __name__ == "__main__":
    main()
