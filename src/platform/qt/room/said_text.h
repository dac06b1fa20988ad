// What is said in a room as Qt draws it: pieces of plain text with a format each. Nothing in it is
// ever read as HTML, loaded or run.
#pragma once

#include "chat/markup.h"

#include <QColor>
#include <QTextCharFormat>
#include <string>
#include <string_view>

class QTextCursor;

namespace larkspin {

// Inserts a line with the client's markup, to be shown on that ground, and gives it as it is seen.
// `plain` is the format of
// text without a style of its own.
std::string insertSaid(QTextCursor& cursor, std::string_view line, const QTextCharFormat& plain,
                       const QColor& ground);

// Makes links of the addresses in a text that stands from that position on, as it is seen.
void linkSaid(QTextCursor& cursor, int from, std::string_view seen);

// Inserts plain text on one line, such as a name. One that is written from right to left can't turn
// what stands after it around.
void insertName(QTextCursor& cursor, std::string_view name, const QTextCharFormat& format);

// The colour, or one like it that differs enough from the ground to be read there.
QColor readable(const QColor& color, const QColor& ground);

} // namespace larkspin
