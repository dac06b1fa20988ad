// The conversations in a list: how much is unread in each, and where the owner was called. What he
// chooses there comes in front.
#pragma once

#include <QListView>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace larkspin {

class Conversations;

class RoomsView : public QListView {
public:
    // The conversations must outlive it.
    explicit RoomsView(const Conversations& conversations);
    ~RoomsView() override;

    // The task gets the place of the one that the owner wants to go to, inside of a callback of
    // Qt's.
    void onChosen(std::function<void(const std::string& place)> chosen) {
        chosen_ = std::move(chosen);
    }

    // To be called before the thread sleeps. Whether anything is another.
    bool refresh();

private:
    class Model;
    class Drawing;
    void choose(const QModelIndex& index);
    void keyPressEvent(QKeyEvent* event) override;

    const Conversations& conversations_;
    std::unique_ptr<Model> model_;
    std::unique_ptr<Drawing> drawing_;
    std::function<void(const std::string&)> chosen_ = [](const std::string&) {};
    std::uint64_t revision_ = 0;
};

} // namespace larkspin
