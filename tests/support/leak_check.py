#!/usr/bin/env python3
"""Looks for removed texts anywhere in a saved PDF.

Every stream that zlib can inflate is inflated; the whole file and each inflated stream are
searched, without regard to case, for each text as UTF-8, PDFDocEncoding (Latin-1), UTF-16 in
both byte orders, inside hex strings and inside escaped literal strings (a run of whitespace
in the text matches any run of whitespace); and pdftotext's text of the file is searched as
well. Prints one line per finding as "TEXT<TAB>WHERE" and exits 1 when anything
remains, 0 when nothing does, 2 when the file cannot be read.

    leak_check.py FILE.pdf TEXT [TEXT ...]
Usable as a module: find_leaks(path, texts) -> list of (text, where).
"""
import re
import subprocess
import sys
import zlib

STREAM = re.compile(rb"stream\r?\n")
HEX_STRING = re.compile(rb"<([0-9A-Fa-f\s]{4,})>")


def inflate_streams(data):
    """The inflated bytes of every stream that zlib can read, with the offset of each."""
    found = []
    for match in STREAM.finditer(data):
        start = match.end()
        end = data.find(b"endstream", start)
        if end < 0:
            continue
        decoder = zlib.decompressobj()
        try:
            found.append((start, decoder.decompress(data[start:end])))
        except zlib.error:
            continue
    return found


def hex_strings(data):
    """The bytes of every hex string in data."""
    out = []
    for match in HEX_STRING.finditer(data):
        digits = re.sub(rb"\s", b"", match.group(1))
        if len(digits) % 2:
            digits += b"0"
        try:
            out.append(bytes.fromhex(digits.decode("ascii")))
        except ValueError:
            continue
    return out


ESCAPES = {ord("n"): b"\n", ord("r"): b"\r", ord("t"): b"\t", ord("b"): b"\b", ord("f"): b"\f"}


def literal_strings(data):
    """The decoded bytes of every literal string (parenthesised, with escapes) in data."""
    out = []
    at = data.find(b"(")
    while at >= 0:
        depth, pos, value = 1, at + 1, bytearray()
        while pos < len(data) and depth:
            byte = data[pos]
            if byte == 0x5C and pos + 1 < len(data):  # backslash
                nxt = data[pos + 1]
                if nxt in ESCAPES:
                    value += ESCAPES[nxt]
                    pos += 2
                elif 0x30 <= nxt <= 0x37:
                    digits = re.match(rb"[0-7]{1,3}", data[pos + 1:pos + 4]).group(0)
                    value.append(int(digits, 8) & 0xFF)
                    pos += 1 + len(digits)
                elif nxt in (0x0A, 0x0D):
                    pos += 2
                else:
                    value.append(nxt)
                    pos += 2
                continue
            depth += {0x28: 1, 0x29: -1}.get(byte, 0)
            if depth:
                value.append(byte)
            pos += 1
        if b"\\" in data[at:pos]:
            out.append(bytes(value))
        at = data.find(b"(", pos)
    return out


def encodings(text):
    """The forms a text can take in a PDF's bytes, as patterns over lower-case bytes: a run of
    whitespace in the text matches any run of whitespace in UTF-8 and PDFDocEncoding."""
    lower = text.lower()
    words = lower.split()
    forms = [re.compile(re.escape(lower.encode("utf-16-be"))),
             re.compile(re.escape(lower.encode("utf-16-le")))]
    for codec in ("utf-8", "latin-1"):
        try:
            forms.append(re.compile(rb"\s+".join(re.escape(w.encode(codec)) for w in words)))
        except UnicodeEncodeError:
            pass
    return forms


def holds(blob, forms):
    low = blob.lower()
    return any(form.search(low) for form in forms)


def pdftotext(path):
    result = subprocess.run(["pdftotext", "-q", path, "-"], capture_output=True)
    return result.stdout.decode("utf-8", "replace")


def find_leaks(path, texts):
    with open(path, "rb") as handle:
        data = handle.read()
    streams = inflate_streams(data)
    hexes = hex_strings(data) + [h for _, s in streams for h in hex_strings(s)]
    literals = literal_strings(data) + [t for _, s in streams for t in literal_strings(s)]
    page_text = re.sub(r"\s+", " ", pdftotext(path)).lower()
    leaks = []
    for text in texts:
        if not text.strip():
            continue
        forms = encodings(text)
        if holds(data, forms):
            leaks.append((text, "raw bytes"))
        leaks += [(text, f"stream at {offset}") for offset, s in streams if holds(s, forms)]
        if any(holds(h, forms) for h in hexes):
            leaks.append((text, "hex string"))
        if any(holds(t, forms) for t in literals):
            leaks.append((text, "escaped literal string"))
        if re.sub(r"\s+", " ", text).lower() in page_text:
            leaks.append((text, "pdftotext"))
    return leaks


def main(argv):
    if len(argv) < 3:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    try:
        leaks = find_leaks(argv[1], argv[2:])
    except OSError as error:
        print(error, file=sys.stderr)
        return 2
    for text, where in leaks:
        print(f"{text}\t{where}")
    return 1 if leaks else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
