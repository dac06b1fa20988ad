// What the bar for the song in play is made of: buttons, sliders and a text that is cut where it
// doesn't fit. All of them are drawn in the colours of their palette and sized by their font.
#pragma once

#include "platform/qt/glyphs.h"

#include <QAbstractButton>
#include <QLabel>
#include <QSlider>
#include <QStringList>
#include <optional>

namespace larkspin {

// Shows a mark, or a word. The keyboard reaches it by Tab; a click leaves the focus where it is.
class BarButton : public QAbstractButton {
public:
    explicit BarButton(const char* name);

    void showMark(Glyph glyph, const QString& spoken);
    // It is as wide as the widest of these words, whichever it shows.
    void showWord(const QString& word, const QStringList& words, const QString& spoken);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    std::optional<Glyph> glyph_;
    QStringList words_;
};

// Tells where it is moved to once it is let go of; a click moves it there at once.
class BarSlider : public QSlider {
public:
    BarSlider(const char* name, const QString& spoken, int step, int page);

    void setUsualWidth(int pixels) { usualWidth_ = pixels; } // if there is room for it

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int usualWidth_ = 0;
};

// One line of plain text, and all of it as a tip where it is cut.
class CutLabel : public QLabel {
public:
    explicit CutLabel(const char* name);

    void showText(const QString& text, bool isDim);

    QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    bool isDim_ = false;
};

} // namespace larkspin
