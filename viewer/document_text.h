// Foreign text (from a file, from another machine) as lines that are safe in a document.
//
// The filters write the bytes of a line as they stand. Here a line of the viewer's markup, in
// UTF-8, becomes one whose document shows the same text, and in which no text is taken for a part
// of the document. There is a function for each kind of document. They have in common:
//
// - A byte stands for each character: documents know no UTF-8. A character without a byte in the
//   document's font is "?", and so is each byte that is no UTF-8.
// - A control character is a blank.
// - "#", "(" and ")" keep the meaning that the filters give them: see line_markup.h and
//   print_filter.h. A line that defines columns or draws a rule is returned as it stands.
//
// No function throws (memory exhaustion aside), keeps state between calls or reads the locale.
#pragma once
#include <string>
#include <string_view>

#include "viewer/line_markup.h"

namespace document_text {

/// True when `text` is UTF-8 from its first byte to its last: no byte stands alone, no character is
/// longer than it must be, none is half of a pair or above U+10FFFF.
///
///     document_text::is_utf8("caf\xC3\xA9");  // true
///     document_text::is_utf8("caf\xE9");      // false
[[nodiscard]] bool is_utf8(std::string_view text);

/// For the window and for plain text: ISO-8859-1, in which columns line up, as the filters count
/// bytes.
///
///     document_text::for_text("caf\xC3\xA9\t5 \xE2\x82\xAC");  // "caf\xE9 5 ?"
[[nodiscard]] std::string for_text(const std::string& line);

/// For PDF: ISO-8859-1; a backslash is doubled, and "endstream" and "endobj" begin with an escape,
/// "\145", which readers show as "e". `columns` are those in which the filter will draw the line:
/// an escape that the edge of its column would cut is moved behind the edge. A definition of
/// columns replaces them, as it will in the filter.
///
///     line_markup::column_layout columns;
///     document_text::for_pdf("#C 20 ", columns);            // "#C 20 "
///     document_text::for_pdf("C:\\caf\xC3\xA9", columns);   // "C:\\\\caf\xE9"
///     document_text::for_pdf("endobj", columns);            // "\\145ndobj"
[[nodiscard]] std::string for_pdf(const std::string& line, line_markup::column_layout& columns);

/// For PostScript: as for_pdf, but in the standard encoding of its font. That has no accented
/// letters, which lose their accents.
///
///     line_markup::column_layout columns;
///     document_text::for_postscript("caf\xC3\xA9", columns);  // "cafe"
[[nodiscard]] std::string for_postscript(const std::string& line,
                                         line_markup::column_layout& columns);

}  // namespace document_text
