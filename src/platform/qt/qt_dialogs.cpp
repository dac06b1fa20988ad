#include "platform/qt/qt_dialogs.h"

#include "library/playlist_row.h"
#include "platform/posix/drive_paths.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/task_bar.h"
#include "text/stand_ins.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

// A dialog that comes up within this time after a press is taken for the answer to it.
constexpr Nanoseconds answerTime = 1s;

std::optional<std::string> firstOf(const std::vector<std::string>& paths) {
    return paths.empty() ? std::nullopt : std::optional(paths.front());
}

// As Qt reads it: the patterns in brackets after the description, divided by blanks.
QString filterOf(const FileType& type) {
    return toQt(type.description + " (" + type.patterns + ')').replace(';', ' ');
}

QString nativeName(const std::string& path) {
    return QFile::decodeName(nativePath(path).c_str());
}

// The format is set before the text, which would be read as markup otherwise.
void describe(QMessageBox& box, QMessageBox::Icon icon, std::string_view title,
              const std::string& text) {
    box.setIcon(icon);
    box.setWindowTitle(toQt(title));
    box.setTextFormat(Qt::PlainText);
    box.setText(toQt(text));
}

} // namespace

void QtDialogs::titledBox(const std::string& title, const std::string& text) {
    const bool answersPress = isPressed();
    QMessageBox box;
    describe(box, QMessageBox::Information, title, text);
    show(box, answersPress);
}

void QtDialogs::stopBox(const std::string& text) {
    const bool answersPress = isPressed();
    QMessageBox box;
    describe(box, QMessageBox::Critical, boxTitle, text);
    show(box, answersPress);
}

bool QtDialogs::askYesNo(const std::string& question, Preset preset) {
    const bool answersPress = isPressed();
    QMessageBox box;
    describe(box, QMessageBox::NoIcon, boxTitle, question);
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.setDefaultButton(preset == Preset::yes ? QMessageBox::Yes : QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
    return show(box, answersPress) == QMessageBox::Yes;
}

std::optional<std::string> QtDialogs::askLine(const TextQuestion& question) {
    const bool answersPress = isPressed();
    QInputDialog dialog;
    dialog.setWindowTitle(toQt(question.title));
    dialog.setLabelText({}); // makes the label
    for (QLabel* label : dialog.findChildren<QLabel*>())
        label->setTextFormat(Qt::PlainText);
    dialog.setLabelText(toQt(question.prompt).replace('&', "&&")); // which would mark a key
    dialog.setTextValue(toQt(question.preset));
    if (show(dialog, answersPress) != QDialog::Accepted || dialog.textValue().isEmpty())
        return std::nullopt;
    return dialog.textValue().toStdString();
}

std::optional<std::string> QtDialogs::openFile(const FileQuestion& question) {
    const bool answersPress = isPressed();
    QFileDialog dialog;
    dialog.setFileMode(QFileDialog::ExistingFile);
    return firstOf(askPaths(dialog, question, answersPress));
}

std::vector<std::string> QtDialogs::openFiles(const FileQuestion& question) {
    const bool answersPress = isPressed();
    QFileDialog dialog;
    dialog.setFileMode(QFileDialog::ExistingFiles);
    return askPaths(dialog, question, answersPress);
}

std::optional<std::string> QtDialogs::saveFile(const FileQuestion& question) {
    const bool answersPress = isPressed();
    QFileDialog dialog;
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    return firstOf(askPaths(dialog, question, answersPress));
}

std::optional<std::string> QtDialogs::openDirectory(const FileQuestion& question) {
    const bool answersPress = isPressed();
    QFileDialog dialog;
    dialog.setFileMode(QFileDialog::Directory);
    return firstOf(askPaths(dialog, question, answersPress));
}

// The desktop's own dialog isn't served by this loop, so it isn't used. Whether a file may be
// replaced isn't asked here either: what really is written to is the program's business.
std::vector<std::string> QtDialogs::askPaths(QFileDialog& dialog, const FileQuestion& question,
                                             bool answersPress) {
    dialog.setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::DontConfirmOverwrite |
                      QFileDialog::HideNameFilterDetails);
    dialog.setWindowTitle(toQt(question.title));
    QStringList filters;
    for (const FileType& type : question.types)
        filters << filterOf(type);
    if (!filters.isEmpty())
        dialog.setNameFilters(filters);
    const QString directory = nativeName(question.directory);
    dialog.setDirectory(directory.isEmpty() ? QDir::homePath() : directory);
    if (!question.preset.empty())
        dialog.selectFile(nativeName("c:\\" + question.preset).mid(1));
    // The part of the preset that the owner leaves keeps its bytes, which Qt would change.
    const std::string begun = nativePath(joinPath(question.directory, question.preset));
    std::vector<std::string> paths;
    if (show(dialog, answersPress) == QDialog::Accepted)
        for (const QString& chosen : dialog.selectedFiles())
            paths.push_back(
                drivePath(afterEditing(begun, QFile::encodeName(chosen).toStdString())));
    return paths;
}

// The windows, the tray and the room stay open to the owner, who may have to look something up.
int QtDialogs::show(QDialog& dialog, bool answersPress) {
    bool finished = false;
    QObject::connect(&dialog, &QDialog::finished, [&finished] { finished = true; });
    dialog.setModal(false);
    dialog.setWindowFlag(Qt::WindowStaysOnTopHint);
    dialog.setAttribute(Qt::WA_ShowWithoutActivating, !answersPress);
    larkspin::belongTo(main_, dialog);
    dialog.show();
    dialog.raise();
    if (answersPress)
        dialog.activateWindow();
    open_.push_back(&dialog);
    const unsigned before = dismissals_;
    loop_.waitFor([&] { return finished || dismissals_ != before; }, loop_.now() + answerLimit);
    std::erase(open_, &dialog);
    if (!finished || dismissals_ != before)
        return 0;
    ownerPresses(); // another question may follow
    return dialog.result();
}

// The dialogs vanish at once. Their callers go on when the handlers that were started inside their
// waits have returned.
void QtDialogs::dismissAll() {
    ++dismissals_;
    for (QDialog* dialog : open_)
        dialog->hide();
}

// To be called before a dialog is made, since making one takes its time.
bool QtDialogs::isPressed() const {
    return pressedAt_ && loop_.now() - *pressedAt_ < answerTime;
}

void QtDialogs::ownerPresses() {
    pressedAt_ = loop_.now();
}

} // namespace larkspin
