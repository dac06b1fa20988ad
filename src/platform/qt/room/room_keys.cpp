#include "platform/qt/room/room_keys.h"

#include "host/conversation_rows.h"
#include "host/conversations.h"

#include <QShortcut>
#include <QWidget>
#include <utility>

namespace larkspin {

void takeRoomKeys(QWidget& window, const Conversations& conversations, const RoomKeys& keys) {
    const auto on = [&window](Qt::Key key, Task does) {
        QObject::connect(new QShortcut(Qt::ALT | key, &window), &QShortcut::activated, &window,
                         std::move(does));
    };
    for (int number = 0; number <= 9; ++number)
        on(static_cast<Qt::Key>(Qt::Key_0 + number), [&conversations, goTo = keys.goTo, number] {
            goTo(number == 0 ? &conversations.home() : conversations.numbered(number));
        });
    for (const auto& [key, steps] : {std::pair(Qt::Key_Up, -1), {Qt::Key_Down, 1}})
        on(key, [&conversations, goTo = keys.goTo, steps = steps] {
            goTo(&besideFront(conversations, steps));
        });
    on(Qt::Key_A, [&conversations, goTo = keys.goTo] { goTo(nextUnread(conversations)); });
    on(Qt::Key_L, keys.showLinks);
    on(Qt::Key_End, keys.toEnd);
}

} // namespace larkspin
