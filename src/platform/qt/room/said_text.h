// What is said in a room as Qt draws it: pieces of plain text with a format each. Nothing in it is
// ever read as HTML, loaded, linked or run.
#pragma once

#include "chat/markup.h"

#include <QColor>
#include <QTextCharFormat>
#include <string_view>

class QTextCursor;

namespace larkspin {

// Inserts a line with the client's markup, to be shown on black. `plain` is the format of text
// without a style of its own.
void insertSaid(QTextCursor& cursor, std::string_view line, const QTextCharFormat& plain);

// Inserts plain text on one line, such as a name. One that is written from right to left can't turn
// what stands after it around.
void insertName(QTextCursor& cursor, std::string_view name, const QTextCharFormat& format);

// The colour, or one like it that is light enough to be read on black.
QColor readable(const QColor& color);

} // namespace larkspin
