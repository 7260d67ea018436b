#!/usr/bin/env python3
"""Writes the golden documents beside it: what each filter must make of CASE.lines, byte for byte.

A second account of the formats, kept apart from the library's own on purpose: one flat loop for each document, with
plain counters. Run it again after a change to a format, and read the difference before committing it.

    CASE.lines   the lines, each ended by a newline
    CASE.pdf     CASE.ps     CASE.txt
    CASE.screen  the screen's pages in order, each ended by a form feed
"""
import pathlib
import random

HERE = pathlib.Path(__file__).parent


def kind(line):
    """0 text, 1 #C, 2 #P, 3 #T."""
    return {b"#C": 1, b"#P": 2, b"#T": 3}.get(line[:2], 0)


def breaks(lines):
    """The indices after which a page ends."""
    result = []
    if len(lines) < 1:
        return result
    counted = 0
    base = 0
    i = 0
    while True:
        if kind(lines[i]) in (0, 3):
            counted += 1
        if i == len(lines) - 1:
            return result
        if counted > base + 76:
            result.append(i)
            counted = i + 1
            base = i + 1
        i += 1


def definition(line):
    widths = [0] * 15
    flags = [0] * 16  # one more than the tables: a rule behind a 15th column is nobody's
    number = 0
    index = -1
    for byte in line:
        if 48 <= byte <= 57:
            number = number * 10 + byte - 48
        elif byte == 32:
            if number:
                index += 1
                if index < 15:
                    widths[index] = number
                number = 0
        elif byte == 84 and index + 1 < 15:
            flags[index + 1] = 1
    return widths, flags[:15]


def width_of(widths, cell):
    return widths[cell] if cell < 15 else 0


def printed(cell, width):
    kept = b""
    for position, byte in enumerate(cell):
        if position < width and byte not in b"()":
            kept += bytes([byte])
    return kept


def pdf(lines):
    out = []
    after = breaks(lines)
    pages = 1 + len(after)
    out += [b"%PDF-1.4",
            b"1 0 obj", b"  << /Type /Catalog", b"     /Outlines 2 0 R", b"     /Pages 3 0 R", b"  >>", b"endobj", b"",
            b"2 0 obj", b"  << /Type /Outlines", b"     /Count 0", b"  >>", b"endobj", b"",
            b"3 0 obj", b"  << /Type /Pages", b"     /Kids ["]
    kids = b""
    for p in range(pages):
        kids += b"%d 0 R\n" % (10 + 2 * p) + b" " * 9
    out += [kids + b"]", b"     /Count %d" % pages, b"  >>", b"endobj", b"",
            b"4 0 obj", b"   [/PDF /Text]", b"endobj", b"",
            b"5 0 obj", b"  << /Type /Font", b"     /Subtype /Type1", b"     /Name /F1",
            b"     /BaseFont /Times-Roman", b"     /Encoding /WinAnsiEncoding", b"  >>", b"endobj", b"",
            b"10 0 obj", b"  << /Type /Page", b"     /Parent 3 0 R", b"     /MediaBox [0 0 612 792]",
            b"     /Contents 11 0 R", b"     /Resources << /ProcSet 4 0 R",
            b"                   /Font << /F1 5 0 R >>", b"                >>", b"  >>", b"endobj", b"",
            b"11 0 obj", b"  << /Length 73 >>", b"stream"]
    counter = 1
    start = 1
    k = 0
    widths, flags = [0] * 15, [0] * 15

    def verticals(spaces):
        x = 0
        for c in range(15):
            if flags[c]:
                out.append(b" " * spaces + b"%d %d m" % (40 + x, 780 - 10 * (counter - 1)))
                out.append(b" " * spaces + b"%d %d l" % (40 + x, 780 - 10 * (start - 1)))
                out.append(b"       S")
            x += 5 * widths[c]

    for i, line in enumerate(lines):
        what = kind(line)
        if what == 2:
            counter = 0
            widths, flags = definition(line)
        elif what == 3:
            y = 780 - 10 * counter
            out.append(b"    40 %d m" % y)
            out.append(b"    %d %d l" % (40 + 5 * sum(widths), y))
            out.append(b"       S")
            counter += 1
        elif what == 1:
            verticals(4)
            start = counter
            widths, flags = definition(line)
        else:
            for c, cell in enumerate(line.split(b"#")):
                x = 40 + 5 + 5 * sum(widths[:c])
                text = printed(cell, width_of(widths, c))
                if text != b" ":
                    out += [b"   BT", b"     /F1 7 Tf", b"     %d %d Td" % (x, 780 - 10 * counter),
                            b"(" + text + b") Tj", b"   ET"]
            counter += 1
        if i in after:
            verticals(4)
            out += [b"endstream", b"endobj", b"",
                    b"%d 0 obj" % (12 + 2 * k), b"  << /Type /Page", b"     /Parent 3 0 R",
                    b"     /MediaBox [0 0 612 792]", b"     /Contents %d 0 R" % (11 + 2 * (k + 1)),
                    b"     /Resources << /ProcSet 4 0 R", b"                   /Font << /F1 5 0 R >>",
                    b"                >>", b"  >>", b"endobj", b"",
                    b"%d 0 obj" % (11 + 2 * (k + 1)), b"  << /Length 73 >>", b"stream"]
            k += 1
            counter = 1
            start = 1
    verticals(6)
    out += [b"endstream", b"endobj", b"",
            b"xref", b"0 8", b"0000000000 65535 f", b"0000000009 00000 n", b"0000000074 00000 n",
            b"0000000120 00000 n", b"0000000179 00000 n", b"0000000364 00000 n", b"0000000466 00000 n",
            b"0000000496 00000 n", b"", b"trailer", b"  << /Size 8", b"     /Root 1 0 R", b"  >>", b"startxref",
            b"625", b"%%EOF"]
    return b"".join(each + b"\n" for each in out)


def postscript(lines):
    out = [b"%!PS-Adobe-2.0", b"%%Creator: folvanix", b"%%Title: tmp.ps", b"%%Pages: 1", b"%%PageOrder: Ascend",
           b"%%BoundingBox: 0 0 612 792", b"%%DocumentPaperSizes: a4", b"%%EndComments",
           b"a4", b"/Times-Roman findfont", b"7 scalefont", b"setfont"]
    after = breaks(lines)
    counter = 1
    start = 1
    pages = 0
    widths, flags = [0] * 15, [0] * 15

    def verticals():
        for c in range(15):
            if flags[c]:
                x = 40 + 5 * sum(widths[:c])
                out.append(b"newpath %d %d moveto %d %d lineto stroke " %
                           (x, 800 - 10 * (counter - 1), x, 800 - 10 * (start - 1)))

    for i, line in enumerate(lines):
        what = kind(line)
        if what == 2:
            counter = 0
            widths, flags = definition(line)
        elif what == 3:
            y = 800 - 10 * counter
            out.append(b"newpath 40 %d moveto %d %d lineto stroke " % (y, 40 + 5 * sum(widths), y))
            counter += 1
        elif what == 1:
            verticals()
            start = counter
            widths, flags = definition(line)
        else:
            for c, cell in enumerate(line.split(b"#")):
                text = printed(cell, width_of(widths, c))
                if text != b" ":
                    out.append(b"%d %d moveto (" % (40 + 5 + 5 * sum(widths[:c]), 800 - 10 * counter) +
                               text + b") show")
            counter += 1
        if i in after:
            pages += 1
            verticals()
            out += [b"showpage", b"%%%%page : %d %d" % (pages, pages), b"a4", b"/Times-Roman findfont",
                    b"7 scalefont", b"setfont"]
            counter = 1
            start = 1
    verticals()
    out.append(b"showpage")
    return b"".join(each + b"\n" for each in out)


def text(lines):
    return b"".join((b"-" * 55 if kind(line) else line) + b"\n" for line in lines)


def screen(lines):
    result = b""
    after = breaks(lines)
    widths = [0] * 15
    for i, line in enumerate(lines):
        what = kind(line)
        if what in (1, 2):
            widths = definition(line)[0]
        elif what == 3:
            result += b"@f@S14 " + b"-" * sum(widths)
        else:
            cells = line.split(b"#")
            result += b"@f@S14 "
            for c, cell in enumerate(cells[:-1]):
                width = width_of(widths, c)
                result += cell[:width].ljust(width)
            result += cells[-1][:width_of(widths, len(cells) - 1)]
        result += b"\n"
        if i in after:
            result += b"\f"
    return result + b"\f"


def three_page_table():
    """161 counted lines: parts by drawer. A new block in the middle of page 1, the next page's in its #P."""
    lines = [b"#C 90 ", b"Inventaire de la cellule ZK4 (tiroirs et presse)",
             b"#C T20 T10 T30 T ", b"#T", b"piece#nombre#remarque", b"#T"]
    lines += [b"piece %d#%d#rangee (%d), tiroir %d" % (n, 7 * n, n // 8, n % 8) for n in range(1, 41)]
    lines += [b"#T", b"#C T30 T30", b"#C T30 T30 T ", b"#T", b"vis \xe9paul\xe9e# "]
    lines += [b"lot %d#valeur un peu trop longue pour sa colonne %d" % (n, n) for n in range(1, 31)]  # 77th: lot 30
    lines += [b"#P T25 T25 T25 T "]
    lines += [b"ligne %d#deux\\%d#trois" % (n, n) for n in range(1, 76)] + [b"#T", b"seule"]  # 77 more
    lines += [b"#T", b"fin#de#table", b"#T"]
    return lines


def mixed(seed):
    """Lines of any byte but those that end lines and screen pages, definitions of any shape, and some of more than 15 columns."""
    source = random.Random(seed)

    def some(alphabet, longest):
        return bytes(source.choice(alphabet) for _ in range(source.randrange(longest)))

    any_byte = bytes(set(range(256)) - set(b"\n\f"))
    lines = []
    for _ in range(300):
        what = source.randrange(9)
        if what == 0:
            lines.append(some(b"#CPT", 4))
        elif what <= 2:
            words = [some(b"Tx", 3) + some(b"0123456789", 3) + some(b"Tx", 2) for _ in range(source.randrange(9))]
            lines.append(source.choice([b"#C", b"#P", b"#C "]) + b" ".join(words) + b" " * source.randrange(3))
        elif what == 3:
            lines.append(b"#T" + some(b"x ", 3))
        elif what == 4:
            lines.append(b"#C" + b"T2 3 " * source.randrange(7, 10) + b"T")
        else:
            alphabet = source.choice([b"ab() #", any_byte])
            lines.append(some(alphabet, 80))
    return lines


CASES = {
    "no_line": [],
    "one_line": [b"un (1)"],
    "one_cell": [b"#C T10 T ", b"un (1)"],
    "example": [b"#C T12 T5 T ", b"#T", b"piece#qte", b"#T", b"vis (M4)#144", b"ecrou# ", b"#C T17 T ", b"total : 144", b"#T"],
    "lines_77": [b"#C 12 "] + [b"ligne %d" % n for n in range(1, 78)],
    "lines_78": [b"#C 12 "] + [b"ligne %d" % n for n in range(1, 79)],
    "table": three_page_table(),
    "mixed_1": mixed(1),
    "mixed_2": mixed(2),
}

for name, lines in CASES.items():
    (HERE / (name + ".lines")).write_bytes(b"".join(line + b"\n" for line in lines))
    for suffix, make in [("pdf", pdf), ("ps", postscript), ("txt", text), ("screen", screen)]:
        (HERE / f"{name}.{suffix}").write_bytes(make(lines))
