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

class QKeyEvent;
class QMouseEvent;

namespace larkspin {

// What a view works with beside its control.
struct ViewParts {
    const Hand& hand;
    WindowMover& mover;
    QWidget& parent;
};

class ControlView : public QObject {
public:
    ~ControlView() override;

    bool isOf(const Control& control) const {
        return name_ == control.name && kind_ == control.kind;
    }
    // One call per turn, while the window is shown.
    void refresh(const Control& control, int dpi);

protected:
    ControlView(const ViewParts& parts, const Control& control, std::unique_ptr<QWidget> widget);

    QWidget& widget() const { return *widget_; }
    const Hand& hand() const { return parts_.hand; }
    const std::string& name() const { return name_; }
    // Nothing once it has gone from its window.
    const Control* control() const { return hand().window().find(name_); }

    // Mouse and drops may arrive at another widget, which scrolls inside of it.
    void listenTo(QWidget& inner);

    // What it shows, with a control that is in sight.
    virtual void show(const Control& control) = 0;
    virtual void dress(const Control& control);

    // True when Qt's own handling is to be left out.
    virtual bool pressed(const QMouseEvent& event);
    virtual bool released(const QMouseEvent& event);
    virtual bool pressedAgain(const QMouseEvent& event); // or it is no double click
    virtual bool strike(const QKeyEvent& event);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool releasedAfterDoubleClick();
    bool mouseMoved(const QMouseEvent& event);
    bool keyPressed(const QKeyEvent& event);
    bool dragged(QEvent& event) const;
    void hover();

    ViewParts parts_;
    const std::string name_;
    const Control::Kind kind_;
    std::unique_ptr<QWidget> widget_;
    bool isDoubleClicked_ = false;                                     // and the button still down
    std::optional<std::pair<Color, Color>> colors_;                    // that it shows
    std::shared_ptr<bool> isHovering_ = std::make_shared<bool>(false); // an event is on its way
};

// A press where no mouse is: by the keyboard, or from a screen reader. What answers to a double
// click alone gets that.
void pressWithoutMouse(Window& window, const std::string& control, int row = noRow);

// Of the control's kind.
std::unique_ptr<ControlView> makeView(const ViewParts& parts, const Control& control);

// The kinds: see their own files.
std::unique_ptr<ControlView> makeCaptionView(const ViewParts& parts, const Control& control);
std::unique_ptr<ControlView> makeSwatchView(const ViewParts& parts, const Control& control);
std::unique_ptr<ControlView> makeListView(const ViewParts& parts, const Control& control);
std::unique_ptr<ControlView> makeTextView(const ViewParts& parts, const Control& control);
std::unique_ptr<ControlView> makeSliderView(const ViewParts& parts, const Control& control);
std::unique_ptr<ControlView> makeComboView(const ViewParts& parts, const Control& control);

} // namespace larkspin
