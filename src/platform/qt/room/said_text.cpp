#include "platform/qt/room/said_text.h"

#include "host/links.h"
#include "host/readable_color.h"
#include "platform/qt/qt_text.h"
#include "text/visible.h"

#include <QFontDatabase>
#include <QHash>
#include <QTextCursor>
#include <utility>

namespace larkspin {

namespace {

// A line break within a line that is said. The rest is indented more than anything that begins a
// line.
constexpr std::string_view setIn = "\u2028    ";

// Fonts that people in rooms name but few machines here have, and free ones of the same widths.
constexpr std::pair<std::string_view, std::string_view> standIns[] = {
    {"arial", "Liberation Sans"},
    {"arial narrow", "Liberation Sans Narrow"},
    {"courier new", "Liberation Mono"},
    {"times new roman", "Liberation Serif"},
};

using Families = QHash<QString, QString>; // by their names in small letters

Families installedFamilies() {
    Families families;
    for (const QString& family : QFontDatabase::families())
        if (!QFontDatabase::isPrivateFamily(family))
            families.insert(family.toLower(), family);
    for (const auto& [face, standIn] : standIns) {
        const QString known = families.value(toQt(standIn).toLower());
        // A face that is installed itself needs no stand-in.
        if (!known.isEmpty() && !families.contains(toQt(face)))
            families.insert(toQt(face), known);
    }
    return families;
}

// Empty for a face that isn't here.
QString familyOf(std::string_view face) {
    static const Families families = installedFamilies();
    return families.value(toQt(face).toLower());
}

QTextCharFormat formatOf(const MarkupStyle& style, const QTextCharFormat& plain,
                         const QColor& ground) {
    QTextCharFormat format = plain;
    if (style.bold)
        format.setFontWeight(QFont::Bold);
    format.setFontUnderline(style.underlined);
    format.setFontItalic(style.italic);
    if (style.color)
        format.setForeground(readable(QColor(QRgb{*style.color}), ground));
    if (const QString family = style.face.empty() ? QString() : familyOf(style.face);
        !family.isEmpty())
        format.setFontFamilies(QStringList(family));
    return format;
}

} // namespace

QColor readable(const QColor& color, const QColor& ground) {
    const auto plain = [](const QColor& from) { return from.rgb() & 0xFFFFFF; };
    return QColor(QRgb{readableColor(plain(color), plain(ground))});
}

std::string insertSaid(QTextCursor& cursor, std::string_view line, const QTextCharFormat& plain,
                       const QColor& ground) {
    std::string seen;
    for (const MarkupPiece& piece : readMarkup(line)) {
        const std::string text = visibleText(piece.text, setIn);
        cursor.insertText(toQt(text), formatOf(piece.style, plain, ground));
        seen += text;
    }
    return seen;
}

void linkSaid(QTextCursor& cursor, int from, std::string_view seen) {
    const auto positionOf = [&](std::size_t bytes) {
        return from + static_cast<int>(toQt(seen.substr(0, bytes)).size());
    };
    for (const Link& link : linksIn(seen)) {
        QTextCursor range = cursor;
        range.setPosition(positionOf(link.begin));
        range.setPosition(positionOf(link.begin + link.length), QTextCursor::KeepAnchor);
        QTextCharFormat format;
        format.setAnchor(true);
        format.setAnchorHref(QString::fromStdString(link.address));
        format.setFontUnderline(true);
        range.mergeCharFormat(format);
    }
}

void insertName(QTextCursor& cursor, std::string_view name, const QTextCharFormat& format) {
    constexpr char16_t isolate = 0x2068, endOfIsolate = 0x2069;
    const QString visible = toQt(visibleName(name));
    cursor.insertText(visible.isRightToLeft() ? isolate + visible + QChar(endOfIsolate) : visible,
                      format);
}

} // namespace larkspin
