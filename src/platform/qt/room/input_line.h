// The line in which the owner types what he says, with what it offers above it.
#pragma once

#include "host/line_typing.h"
#include "platform/qt/room/offer_panels.h"

#include <QLineEdit>
#include <functional>
#include <string>
#include <utility>

namespace larkspin {

class InputLine : public QLineEdit, private TypedField {
public:
    // The history must live on.
    explicit InputLine(LineHistory& history);

    // Page up and page down scroll what is above the line.
    void onPage(std::function<void(int pages)> scroll) { onPage_ = std::move(scroll); }

    // Its cursor counts as Qt does.
    LineTyping typing;

private:
    Draft typed() const override;
    std::string beforeCursor() const override;
    void become(const Draft& draft) override;
    void becomeEmpty() override { clear(); }
    void forget() override;
    bool replaceBefore(std::size_t characters, const std::string& text) override;

    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool takesPaste();
    void become(const QString& line, qsizetype cursor);

    std::function<void(int)> onPage_ = [](int) {};
    QString before_; // what stood there before the last change
    int cursorBefore_ = 0;
    OfferPanels panels_;
};

} // namespace larkspin
