#include "platform/qt/room/play_bar.h"

#include "platform/qt/menu_view.h"
#include "platform/qt/qt_text.h"
#include "playback/sliders.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>
#include <QPointer>
#include <QShortcut>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <utility>

namespace larkspin {

namespace {

constexpr int betweenParts = 6, betweenBarRows = 2; // in pixels
constexpr int volumeWidth = 72;

// Seconds that a key moves the position by; a notch of the wheel counts as three keys.
constexpr int secondsOfKey = 5, secondsOfPage = 30;
constexpr int volumeOfKey = 2, volumeOfPage = 10;

class SpeakerMark : public QLabel {
public:
    QSize sizeHint() const override { return {fontMetrics().height(), fontMetrics().height()}; }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QRect around =
            rect().adjusted(-width() / 3, -height() / 3, width() / 3, height() / 3);
        painter.fillPath(glyphIn(around, Glyph::speaker), palette().color(QPalette::WindowText));
    }
};

QStringList modeWords() {
    QStringList words;
    for (const auto mode :
         {PlayMode::none, PlayMode::repeat, PlayMode::shuffle, PlayMode::continuous})
        words.append(toQt(wordFor(mode)));
    return words;
}

const char* spokenStatus(const SongView& view) {
    if (view.status == SongView::Status::playing)
        return "in play: ";
    return view.isStopped() ? "stopped: " : "paused: ";
}

} // namespace

PlayBar::PlayBar(EventLoop& loop, SongInPlay& song, Task pressed)
    : loop_(loop), song_(song), pressed_(std::move(pressed)), name_(*new CutLabel("songName")),
      time_(*new QLabel), previous_(*new BarButton("previous")), play_(*new BarButton("play")),
      next_(*new BarButton("next")),
      position_(*new BarSlider("position", "position", secondsOfKey, secondsOfPage)),
      volume_(*new BarSlider("volume", "volume", volumeOfKey, volumeOfPage)),
      mode_(*new BarButton("mode")) {
    layOut();
    listen();
    loop_.beforeSleep([&loop, bar = QPointer<PlayBar>(this)] {
        if (bar && bar->refresh())
            loop.post([] {}); // Qt draws in a later turn
    });
}

void PlayBar::layOut() {
    setObjectName("playBar");
    setAccessibleName("song in play");
    time_.setObjectName("songTime");
    time_.setTextFormat(Qt::PlainText);
    previous_.showMark(Glyph::previous, "previous song");
    next_.showMark(Glyph::next, "next song");
    volume_.setRange(0, Sliders::mostVolume);
    volume_.setUsualWidth(volumeWidth);

    auto* const top = new QHBoxLayout;
    top->setSpacing(betweenParts);
    top->addWidget(&name_, 1);
    top->addWidget(&time_);
    auto* const bottom = new QHBoxLayout;
    bottom->setSpacing(betweenParts);
    for (QWidget* button : {&previous_, &play_, &next_})
        bottom->addWidget(button);
    bottom->addWidget(&position_, 1);
    bottom->addWidget(new SpeakerMark);
    bottom->addWidget(&volume_);
    bottom->addWidget(&mode_);
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(betweenBarRows);
    rows->addLayout(top);
    rows->addLayout(bottom);
}

void PlayBar::listen() {
    const auto on = [this](BarButton& button, void (SongInPlay::*operation)()) {
        connect(&button, &QAbstractButton::clicked, this, [this, operation] {
            does([operation](SongInPlay& song) { (song.*operation)(); });
        });
    };
    on(previous_, &SongInPlay::previous);
    on(play_, &SongInPlay::playOrPause);
    on(next_, &SongInPlay::next);
    // Where no desktop takes the keys for music, they come here.
    for (const auto& [key, button] : {std::pair(Qt::Key_MediaPlay, &play_),
                                      {Qt::Key_MediaTogglePlayPause, &play_},
                                      {Qt::Key_MediaPrevious, &previous_},
                                      {Qt::Key_MediaNext, &next_}})
        connect(new QShortcut(key, this, {}, {}, Qt::ApplicationShortcut), &QShortcut::activated,
                button, &QAbstractButton::click);
    connect(&mode_, &QAbstractButton::clicked, this, [this] { openModes(); });
    connect(&volume_, &QSlider::sliderMoved, this, [this](int value) {
        isTouched_ = true;
        does([value](SongInPlay& song) { song.setVolume(value); });
    });
    connect(&volume_, &QSlider::valueChanged, this, [this](int value) {
        isTouched_ = true;
        does([value](SongInPlay& song) { song.setVolume(value); });
    });
    connect(&position_, &QSlider::sliderPressed, this, [this] { heldSong_ = shown_->path; });
    connect(&position_, &QSlider::sliderMoved, this, [this](int second) {
        isTouched_ = true;
        time_.setText(toQt(shown_->timeAt(second)));
    });
    connect(&position_, &QSlider::valueChanged, this, [this](int second) { seek(second); });
}

// Each press is an event of its own, since what it does may wait, and Qt's callbacks can't.
void PlayBar::does(std::function<void(SongInPlay&)> what) {
    pressed_();
    loop_.post([&song = song_, what = std::move(what)] { what(song); });
}

// If another song has begun since the slider was taken hold of, it isn't that one's place.
void PlayBar::seek(int second) {
    isTouched_ = true;
    const std::string path = heldSong_ ? *heldSong_ : shown_->path;
    does([second, path](SongInPlay& song) { song.moveTo(second, path); });
}

void PlayBar::openModes() {
    pressed_();
    if (!modes_)
        modes_ = new QMenu(this);
    const auto choose = [this](const Task& action) {
        pressed_();
        loop_.post(action);
    };
    fillMenu(*modes_, song_.modeMenu(), choose, MenuDrawnBy::qt);
    const QSize size = modes_->sizeHint();
    modes_->popup(mode_.mapToGlobal(QPoint(mode_.width() - size.width(), -size.height())));
}

bool PlayBar::isInSight() const {
    return isVisible() && !window()->isMinimized();
}

// While the owner holds a slider it stays where his hand is.
bool PlayBar::refresh() {
    if (!isInSight())
        return false;
    const SongView now = song_.view();
    const bool isHeld = position_.isSliderDown() || volume_.isSliderDown();
    if (now == shown_ && (!isTouched_ || isHeld))
        return false;
    shown_ = now;
    if (!isHeld) {
        isTouched_ = false;
        heldSong_.reset();
    }
    showSong(now);
    return true;
}

void PlayBar::showSong(const SongView& view) {
    const bool plays = view.status == SongView::Status::playing;
    const QString title = QString::fromStdString(view.title());
    name_.showText(title, !plays);
    name_.setAccessibleName(view.name.empty() ? title : spokenStatus(view) + title);
    play_.showMark(plays ? Glyph::pause : Glyph::play, plays ? "pause" : "play");
    play_.setEnabled(view.canPlay());
    previous_.setEnabled(view.hasList);
    next_.setEnabled(view.hasList);
    const QString mode = toQt(wordFor(view.mode));
    mode_.showWord(mode, modeWords(), "mode: " + mode);
    showPosition(view);
    if (volume_.isSliderDown())
        return;
    const QSignalBlocker quiet(volume_);
    volume_.setValue(view.volume);
    volume_.setToolTip("volume " + QString::number(view.volume));
}

void PlayBar::showPosition(const SongView& view) {
    if (position_.isSliderDown())
        return;
    time_.setText(toQt(view.timeAt(view.position)));
    position_.setEnabled(view.length > 0);
    const QSignalBlocker quiet(position_);
    position_.setRange(0, view.length);
    position_.setValue(view.position);
}

} // namespace larkspin
