// Keys that the owner types where nothing takes text: after a click on a button, say, or on a list.
// They go to the line in which he talks, so that none of them is lost or presses something.
//
// Tab, arrows, Escape, Delete and all that goes with Ctrl or Alt stay where they are struck, and so
// does Return on a list. Space and Return press a button only when Tab has led to it.
//
// What is put together of several keys, such as a letter with its accent, is put together as in
// that line, which answers for whoever takes no text when the input method asks.
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>

class QInputMethodEvent;
class QKeyEvent;

namespace larkspin {

class TypedKeys : public QObject {
public:
    struct Line {
        QWidget& widget;
        std::function<bool()> isBegun;      // something has been typed there
        std::function<void()> comesForward; // with the keyboard
    };
    explicit TypedKeys(Line line);

private:
    enum class Goes { nowhere, toLine, asEver };

    bool eventFilter(QObject* watched, QEvent* event) override;
    bool struck(QWidget& widget, const QKeyEvent& key);
    void composed(const QInputMethodEvent& event);
    bool isMeantForLine(const QObject& watched) const;
    Goes wayOf(const QWidget& widget, const QKeyEvent& key) const;

    Line line_;
    QPointer<QObject> reached_; // by the keyboard
};

} // namespace larkspin
