// Who is in a room, in a list. Those whom the owner ignores are marked.
#pragma once

#include <QListView>
#include <functional>
#include <memory>
#include <string_view>

namespace larkspin {

class RowList;

class PeopleView : public QListView {
public:
    // The list is asked for anew each time.
    struct Source {
        std::function<const RowList&()> people;
        std::function<bool(std::string_view name)> isIgnored;
    };

    explicit PeopleView(Source source);
    ~PeopleView() override;

    // To be called after the people or the ignored names have changed.
    void refresh();

private:
    class Model;
    std::unique_ptr<Model> model_;
};

} // namespace larkspin
