// How all that Qt draws looks as the owner prefers it: the colours, and how large its text is, with
// the keys and the wheel that change that in the room's window. The windows that are data have
// colours and sizes of their own.
#pragma once

#include <QObject>

class QWidget;

namespace larkspin {

class Preferences;

class RoomLooks : public QObject {
public:
    // Both must outlive it.
    RoomLooks(QWidget& window, Preferences& preferences);

private:
    void show();
    bool eventFilter(QObject* watched, QEvent* event) override;

    QWidget& window_;
    Preferences& preferences_;
    int turned_ = 0; // how far the wheel has been, in its own measure, since the last step
};

} // namespace larkspin
