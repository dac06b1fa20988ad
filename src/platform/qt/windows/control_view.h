// A described control as a widget of Qt's: what all kinds have in common. Its place, colours and
// visibility follow the description, and the owner's hand goes back to it.
#pragma once

#include "platform/qt/windows/hand.h"
#include "platform/qt/windows/window_mover.h"

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <memory>
#include <optional>
#include <string>

class QContextMenuEvent;
class QKeyEvent;
class QMouseEvent;

namespace larkspin {

// What a view needs beside its control.
struct ViewParts {
    const Hand& hand;
    WindowMover& mover;
    QWidget& parent;
};

class ControlView : public QObject {
public:
    ~ControlView() override;

    // Brings the view up to date, once per turn while the window is shown.
    void refresh(int dpi);

protected:
    ControlView(const ViewParts& parts, const Control& control, std::unique_ptr<QWidget> widget);

    QWidget& widget() const { return *widget_; }
    const Hand& hand() const { return parts_.hand; }
    const std::string& name() const { return name_; }
    // The described control; null once it has gone from its window.
    const Control* control() const { return hand().window().find(name_); }

    // The mouse may arrive at another widget, which scrolls inside of it.
    void listenTo(QWidget& inner);

    // Show what the control shows, and its colours. They are called when the control is in sight.
    virtual void show(const Control& control) = 0;
    virtual void dress(const Control& control);

    // These return true when Qt's own handling is to be left out.
    virtual bool pressed(const QMouseEvent& event);
    virtual bool released(const QMouseEvent& event);
    virtual bool pressedAgain(const QMouseEvent& event); // the second press of a double click
    virtual bool strike(const QKeyEvent& event);
    virtual bool menuAsked(const QContextMenuEvent& event);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool mouseMoved(const QMouseEvent& event);
    void hover();
    bool keyPressed(const QKeyEvent& event);

    ViewParts parts_;
    const std::string name_;
    std::unique_ptr<QWidget> widget_;
    bool isDoubleClicked_ = false;                                     // since the last press
    std::optional<std::pair<Color, Color>> colors_;                    // that it shows
    std::shared_ptr<bool> isHovering_ = std::make_shared<bool>(false); // an event is on its way
};

// Makes the view for the control's kind.
std::unique_ptr<ControlView> makeView(const ViewParts& parts, const Control& control);

// The kinds: see their own files.
std::unique_ptr<ControlView> makeCaptionView(const ViewParts& parts, const Control& control);
std::unique_ptr<ControlView> makeSwatchView(const ViewParts& parts, const Control& control);
std::unique_ptr<ControlView> makeListView(const ViewParts& parts, const Control& control);
std::unique_ptr<ControlView> makeTextView(const ViewParts& parts, const Control& control);
std::unique_ptr<ControlView> makeSliderView(const ViewParts& parts, const Control& control);
std::unique_ptr<ControlView> makeComboView(const ViewParts& parts, const Control& control);

} // namespace larkspin
