// Who is in a room, in a list, by rank and name. Those whom the owner ignores are marked. What can
// be done about somebody is in a menu.
#pragma once

#include "host/people_rows.h"
#include "platform/qt/menu_view.h"

#include <QListView>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

class PeopleView : public QListView {
public:
    // The list is asked for anew each time.
    struct Source {
        std::function<std::vector<PeopleRow>()> people;
        std::function<bool(std::string_view name)> isIgnored;
    };

    explicit PeopleView(Source source);
    ~PeopleView() override;

    // What can be done about somebody, for a right click or the menu key; and who gets the action
    // that is chosen, and the name of whoever is double-clicked, inside of a callback of Qt's.
    using MenuOf = std::function<std::vector<MenuEntry>(const std::string& name)>;
    void onMenu(MenuOf menuOf, Choose choose) {
        menuOf_ = std::move(menuOf);
        choose_ = std::move(choose);
    }
    void onActivated(std::function<void(const std::string& name)> activated) {
        activated_ = std::move(activated);
    }

    // To be called after the people or the ignored names have changed.
    void refresh();

private:
    class Model;
    class Drawing;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    std::string nameAt(const QModelIndex& index) const;

    MenuOf menuOf_ = [](const std::string&) { return std::vector<MenuEntry>(); };
    Choose choose_ = [](const Task&) {};
    std::function<void(const std::string&)> activated_ = [](const std::string&) {};
    std::unique_ptr<Model> model_;
    std::unique_ptr<Drawing> drawing_;
};

} // namespace larkspin
