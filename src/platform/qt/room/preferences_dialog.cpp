#include "platform/qt/room/preferences_dialog.h"

#include "host/conversation_log.h"
#include "host/preferences.h"
#include "platform/qt/qt_text.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <utility>

namespace larkspin {

namespace {

constexpr int folderWidth = 26; // characters

// In the order of the values.
QComboBox& choiceOf(const QStringList& texts) {
    auto& box = *new QComboBox;
    box.addItems(texts);
    return box;
}

// Without telling of it as if the owner had done it.
void setQuietly(auto& field, auto set) {
    const QSignalBlocker quiet(&field);
    set(field);
}

} // namespace

PreferencesDialog::PreferencesDialog(EventLoop& loop, Preferences& preferences,
                                     ConversationLog& log, AskFolder askFolder, QWidget* parent)
    : QDialog(parent), loop_(loop), preferences_(preferences), log_(log),
      askFolder_(std::move(askFolder)), textSize_(*new QSpinBox),
      colors_(choiceOf({"larkspin's", "the desktop's, light", "the desktop's, dark"})),
      closing_(choiceOf({"minimizes it", "hides it in the tray", "ends larkspin"})),
      stamps_(*new QCheckBox("show &when a line was said")),
      nameColors_(*new QCheckBox("give each &name a colour of its own")),
      notifications_(*new QCheckBox("the desktop tells what is said to &you")),
      writesLog_(*new QCheckBox("write what is said &down in a log")), folder_(*new QLineEdit),
      problem_(*new QLabel) {
    setWindowTitle("larkspin - preferences");
    layOut();
    listen();
    refresh();
}

void PreferencesDialog::layOut() {
    textSize_.setRange(Preferences::smallestText, Preferences::largestText);
    textSize_.setSingleStep(Preferences::textStep);
    textSize_.setSuffix(" %");
    textSize_.setKeyboardTracking(false); // a number that is being typed isn't one yet
    folder_.setMinimumWidth(folder_.fontMetrics().averageCharWidth() * folderWidth);
    folder_.setAccessibleName("music folder");
    problem_.setTextFormat(Qt::PlainText);
    problem_.setWordWrap(true);
    problem_.hide();
    auto* const choose = new QPushButton("choo&se...");
    choose->setAutoDefault(false);
    connect(choose, &QPushButton::clicked, this, [this] { chooseFolder(); });
    auto* const folderRow = new QHBoxLayout;
    folderRow->addWidget(&folder_, 1);
    folderRow->addWidget(choose);

    auto* const form = new QFormLayout(this);
    form->addRow("&text size", &textSize_);
    form->addRow("&colours", &colors_);
    form->addRow("closing the &room's window", &closing_);
    form->addRow(&stamps_);
    form->addRow(&nameColors_);
    form->addRow(&notifications_);
    form->addRow(&writesLog_);
    auto* const folderLabel = new QLabel("&music folder");
    folderLabel->setBuddy(&folder_);
    form->addRow(folderLabel, folderRow);
    form->addRow(&problem_);
    auto* const buttons = new QDialogButtonBox;
    auto* const close = buttons->addButton("close", QDialogButtonBox::RejectRole);
    close->setAutoDefault(false); // Return ends what is typed in a field
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    form->addRow(buttons);
}

// Each acts in an event of its own: a file is written, and what is looked for may take its time.
void PreferencesDialog::listen() {
    const QPointer<PreferencesDialog> dialog(this); // which may have gone by then
    const auto post = [this, dialog](auto act) {
        loop_.post([dialog, act] {
            if (dialog)
                act(*dialog);
        });
    };
    using Self = PreferencesDialog;
    connect(&textSize_, &QSpinBox::valueChanged, this, [post](int percent) {
        post([percent](Self& self) { self.preferences_.setTextSize(percent); });
    });
    connect(&colors_, &QComboBox::currentIndexChanged, this, [post](int index) {
        post([index](Self& self) { self.preferences_.setColors(RoomColors{index}); });
    });
    connect(&closing_, &QComboBox::currentIndexChanged, this, [post](int index) {
        post([index](Self& self) { self.preferences_.setClosing(RoomClosing{index}); });
    });
    connect(&stamps_, &QCheckBox::toggled, this, [post](bool shows) {
        post([shows](Self& self) { self.preferences_.showStamps(shows); });
    });
    connect(&nameColors_, &QCheckBox::toggled, this, [post](bool colors) {
        post([colors](Self& self) { self.preferences_.colorNames(colors); });
    });
    connect(&notifications_, &QCheckBox::toggled, this,
            [post](bool wants) { post([wants](Self& self) { self.preferences_.notify(wants); }); });
    connect(&writesLog_, &QCheckBox::toggled, this,
            [post](bool writes) { post([writes](Self& self) { self.log_.turn(writes); }); });
    connect(&folder_, &QLineEdit::editingFinished, this,
            [post] { post([](Self& self) { self.takeFolder(); }); });
    preferences_.onChange([dialog] {
        if (dialog)
            dialog->refresh();
    });
}

void PreferencesDialog::refresh() {
    setQuietly(textSize_, [this](auto& field) { field.setValue(preferences_.textSize()); });
    setQuietly(colors_, [this](auto& field) {
        field.setCurrentIndex(static_cast<int>(preferences_.colors()));
    });
    setQuietly(closing_, [this](auto& field) {
        field.setCurrentIndex(static_cast<int>(preferences_.closing()));
    });
    setQuietly(stamps_, [this](auto& field) { field.setChecked(preferences_.showsStamps()); });
    setQuietly(nameColors_, [this](auto& field) { field.setChecked(preferences_.colorsNames()); });
    setQuietly(notifications_, [this](auto& field) { field.setChecked(preferences_.notifies()); });
    setQuietly(writesLog_, [this](auto& field) { field.setChecked(log_.isOn()); });
    if (!folder_.isModified())
        folder_.setText(toQt(preferences_.asTyped(preferences_.musicFolder())));
}

void PreferencesDialog::takeFolder() {
    if (folder_.isModified())
        setFolder(folder_.text().toStdString());
}

void PreferencesDialog::chooseFolder() {
    const QPointer<PreferencesDialog> dialog(this);
    loop_.post([dialog] {
        if (!dialog)
            return;
        const auto chosen = dialog->askFolder_(dialog->preferences_.musicFolder());
        if (dialog && chosen)
            dialog->setFolder(*chosen);
    });
}

// An empty one means the desktop's own. The disk may be waited for.
void PreferencesDialog::setFolder(const std::string& typed) {
    const QPointer<PreferencesDialog> dialog(this);
    const bool isThere = preferences_.setMusicFolder(typed);
    if (!dialog)
        return;
    problem_.setText(isThere ? QString() : toQt("there is no folder " + typed));
    problem_.setVisible(!isThere);
    folder_.setModified(!isThere);
    refresh();
}

} // namespace larkspin
