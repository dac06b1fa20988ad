// What is said in a room as Qt draws it: pieces of plain text with a format each. Nothing in it is
// ever read as HTML, loaded, linked or run.
#pragma once

#include "chat/markup.h"

#include <QColor>
#include <QTextCharFormat>
#include <string_view>

class QTextCursor;

namespace larkspin {

// With the client's markup, on the black of a window. `plain` is the format of what has no style of
// its own.
void insertSaid(QTextCursor& cursor, std::string_view line, const QTextCharFormat& plain);

// Plain text on one line, such as a name, which can't turn what stands after it around.
void insertName(QTextCursor& cursor, std::string_view name, const QTextCharFormat& format);

// The colour, or one like it that is light enough to be read on black.
QColor readable(const QColor& color);

} // namespace larkspin
