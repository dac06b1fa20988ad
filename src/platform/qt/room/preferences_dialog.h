// The owner's preferences as a dialog. What he changes counts at once, as it does by its word, and
// what a word changes meanwhile shows here.
#pragma once

#include "shell/event_loop.h"

#include <QDialog>
#include <functional>
#include <optional>
#include <string>

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QSpinBox;

namespace larkspin {

class ConversationLog;
class Preferences;

class PreferencesDialog : public QDialog {
public:
    // Asks for a directory, beginning with one; as drive paths.
    using AskFolder = std::function<std::optional<std::string>(const std::string& beginning)>;

    // All must outlive it.
    PreferencesDialog(EventLoop& loop, Preferences& preferences, ConversationLog& log,
                      AskFolder askFolder, QWidget* parent);

    // Brings it up to date.
    void refresh();

private:
    void layOut();
    void listen();
    void takeFolder();
    void chooseFolder();
    void setFolder(const std::string& typed);

    EventLoop& loop_;
    Preferences& preferences_;
    ConversationLog& log_;
    AskFolder askFolder_;
    QSpinBox& textSize_; // these belong to the layout
    QComboBox& colors_;
    QComboBox& closing_;
    QCheckBox& stamps_;
    QCheckBox& nameColors_;
    QCheckBox& notifications_;
    QCheckBox& writesLog_;
    QLineEdit& folder_;
    QLabel& problem_;
};

} // namespace larkspin
