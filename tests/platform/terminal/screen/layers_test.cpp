#include "platform/terminal/screen/layers.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

class NotingLayer : public Layer {
public:
    NotingLayer(Rank rank, std::string name, std::string& taken)
        : rank_(rank), name_(std::move(name)), taken_(taken) {}

    Rank rank() const override { return rank_; }
    std::optional<Cursor> draw(Cells& cells) override {
        cells.put(0, 0, 10, name_, {});
        return cursor;
    }
    bool take(const Stroke&) override {
        taken_ += name_;
        onTake();
        return takes;
    }

    std::optional<Cursor> cursor;
    bool takes = true;
    std::function<void()> onTake = [] {};

private:
    Rank rank_;
    std::string name_;
    std::string& taken_;
};

struct LayersTest : testing::Test {
    std::string taken;
    NotingLayer room{Layer::Rank::room, "r", taken}, list{Layer::Rank::window, "l", taken},
        media{Layer::Rank::window, "m", taken}, box{Layer::Rank::box, "b", taken};
    Layers layers;

    std::string takers(const Stroke& stroke = KeyStroke{}) {
        taken.clear();
        layers.take(stroke);
        return taken;
    }
    std::string onTop() {
        Cells cells(1, 10);
        layers.draw(cells);
        return textOf(cells).front();
    }
    static Stroke mouse(MouseStroke::Kind kind) { return MouseStroke{.kind = kind}; }
};

TEST_F(LayersTest, StandByRankAndAsTheyCameUp) {
    for (Layer* layer : {static_cast<Layer*>(&box), static_cast<Layer*>(&list),
                         static_cast<Layer*>(&room), static_cast<Layer*>(&media)})
        layers.add(*layer);
    for (NotingLayer* layer : {&room, &list, &media, &box})
        layer->takes = false;
    EXPECT_EQ(takers(), "bmlr");
    layers.raise(list);
    EXPECT_EQ(takers(), "blmr");
    EXPECT_EQ(onTop(), "b");
    EXPECT_TRUE(layers.isOnTop(box));
    layers.remove(box);
    EXPECT_TRUE(layers.isOnTop(list));
    layers.raise(box); // isn't there
    EXPECT_EQ(onTop(), "l");
}

TEST_F(LayersTest, AskToBeDrawnWhenTheyChange) {
    layers.add(room);
    EXPECT_TRUE(layers.isChanged());
    onTop();
    EXPECT_FALSE(layers.isChanged());
    layers.changed();
    EXPECT_TRUE(layers.isChanged());
}

TEST_F(LayersTest, GiveTheCursorToTheUppermostThatHasOne) {
    Cells cells(1, 1);
    layers.add(room);
    layers.add(list);
    EXPECT_EQ(layers.draw(cells), std::nullopt);
    room.cursor = {1, 2};
    EXPECT_EQ(layers.draw(cells), (Cursor{1, 2}));
    list.cursor = {0, 5, false};
    EXPECT_EQ(layers.draw(cells), (Cursor{0, 5, false}));
}

TEST_F(LayersTest, ComeAndGoWhileAStrokeIsTaken) {
    layers.add(room);
    layers.add(list);
    layers.add(media);
    media.takes = false;
    media.onTake = [&] {
        layers.remove(list);
        layers.remove(media);
        layers.add(box);
    };
    EXPECT_EQ(takers(), "mr");
    EXPECT_EQ(takers(), "b");
}

TEST_F(LayersTest, KeepTheMouseFromPressToRelease) {
    using Kind = MouseStroke::Kind;
    layers.add(room);
    layers.add(list);
    list.takes = false;
    EXPECT_EQ(takers(mouse(Kind::press)), "lr");
    list.takes = true;
    EXPECT_EQ(takers(mouse(Kind::move)), "r");
    EXPECT_EQ(takers(mouse(Kind::wheelUp)), "l");
    EXPECT_EQ(takers(mouse(Kind::release)), "r");
    EXPECT_EQ(takers(mouse(Kind::move)), "l");
    takers(mouse(Kind::press));
    layers.remove(list);
    EXPECT_EQ(takers(mouse(Kind::move)), "r");
}

} // namespace
} // namespace larkspin
