#include "platform/qt/room/connect_dialog.h"

#include "irc/client/irc_networks.h"
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

constexpr int fieldWidth = 26; // characters
constexpr int highestPort = 65535;

QLineEdit& lineOf(const QString& hint) {
    auto& line = *new QLineEdit;
    line.setPlaceholderText(hint);
    line.setMinimumWidth(line.fontMetrics().averageCharWidth() * fieldWidth);
    return line;
}

std::string textOf(const QLineEdit& line) {
    return line.text().trimmed().toStdString();
}

} // namespace

ConnectDialog::ConnectDialog(EventLoop& loop, IrcNetworks& networks, std::string ownName,
                             QWidget* parent)
    : QDialog(parent), loop_(loop), networks_(networks), ownName_(std::move(ownName)),
      network_(*new QComboBox), host_(lineOf("irc.libera.chat")),
      encrypted_(*new QCheckBox("&encrypted (TLS)")), port_(*new QSpinBox), nick_(lineOf("")),
      rooms_(lineOf("#music #den")), user_(lineOf("none")), password_(lineOf("")),
      keepsPassword_(*new QCheckBox("&keep the password")),
      atStart_(*new QCheckBox("come &back at each start, until i disconnect")),
      problem_(*new QLabel) {
    setWindowTitle("larkspin - connect");
    layOut();
    listen();
    refresh();
}

void ConnectDialog::layOut() {
    network_.setEditable(true); // its name is the owner's choice
    network_.setInsertPolicy(QComboBox::NoInsert);
    network_.lineEdit()->setPlaceholderText("as you call it");
    network_.lineEdit()->setAccessibleName("network");
    port_.setRange(1, highestPort);
    password_.setEchoMode(QLineEdit::Password);
    problem_.setTextFormat(Qt::PlainText);
    problem_.setWordWrap(true);

    auto* const form = new QFormLayout(this);
    form->addRow("net&work", &network_);
    form->addRow("&server", &host_);
    auto* const wire = new QHBoxLayout;
    auto* const portLabel = new QLabel("&port");
    portLabel->setBuddy(&port_);
    wire->addWidget(&encrypted_, 1);
    wire->addWidget(portLabel);
    wire->addWidget(&port_);
    form->addRow("", wire);
    form->addRow("your &name", &nick_);
    form->addRow("&rooms", &rooms_);
    form->addRow("&account", &user_);
    form->addRow("passwor&d", &password_);
    form->addRow("", &keepsPassword_);
    form->addRow("", &atStart_);
    form->addRow(&problem_);
    auto* const buttons = new QDialogButtonBox;
    buttons->addButton("connect", QDialogButtonBox::AcceptRole)->setDefault(true);
    buttons->addButton("cancel", QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { goThere(); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    form->addRow(buttons);
}

void ConnectDialog::listen() {
    connect(&network_, &QComboBox::activated, this, [this](int number) { showKnown(number); });
    connect(&encrypted_, &QCheckBox::toggled, this, [this](bool isOn) { encryptionChanged(isOn); });
}

void ConnectDialog::refresh() {
    network_.clear();
    known_.clear();
    for (const auto& each : networks_.all())
        if (each->isKnown()) {
            known_.push_back(each->name());
            network_.addItem(toQt(each->name()));
        }
    fill({.nick = ownName_});
    host_.setFocus();
}

void ConnectDialog::showKnown(int number) {
    if (number < 0 || number >= static_cast<int>(known_.size()))
        return;
    const std::string& name = known_[static_cast<std::size_t>(number)];
    if (const IrcNetwork* const network = networks_.named(name)) {
        fill(connectFormOf(*network));
        network_.setCurrentIndex(number);
    }
}

void ConnectDialog::fill(const IrcConnectForm& form) {
    const QSignalBlocker quiet(&encrypted_);
    network_.setCurrentIndex(-1);
    network_.setEditText(toQt(form.network));
    host_.setText(toQt(form.host));
    encrypted_.setChecked(form.encrypted);
    port_.setValue(form.port);
    nick_.setText(toQt(form.nick));
    rooms_.setText(toQt(form.rooms));
    user_.setText(toQt(form.user));
    password_.clear();
    password_.setPlaceholderText(form.user.empty() ? "" : "as it is");
    keepsPassword_.setChecked(form.keepsPassword);
    atStart_.setChecked(form.atStart);
    problem_.clear();
}

IrcConnectForm ConnectDialog::filledIn() const {
    return {.network = network_.currentText().trimmed().toStdString(),
            .host = textOf(host_),
            .port = port_.value(),
            .encrypted = encrypted_.isChecked(),
            .nick = textOf(nick_),
            .rooms = textOf(rooms_),
            .user = textOf(user_),
            .password = password_.text().toStdString(),
            .keepsPassword = keepsPassword_.isChecked(),
            .atStart = atStart_.isChecked()};
}

// The usual port of the other way was meant for that.
void ConnectDialog::encryptionChanged(bool isOn) {
    if (port_.value() == (isOn ? ircPlainPort : ircPortByTls))
        port_.setValue(isOn ? ircPortByTls : ircPlainPort);
}

// It may wait for a disk, so it is done in an event of its own.
void ConnectDialog::goThere() {
    const IrcConnectForm form = filledIn();
    problem_.setText(toQt(problemOf(form)));
    if (!problem_.text().isEmpty())
        return;
    accept();
    password_.clear();
    const QPointer<ConnectDialog> dialog(this);
    loop_.post([dialog, form] {
        if (!dialog)
            return;
        const std::string problem = connectBy(dialog->networks_, form);
        if (dialog && !problem.empty()) {
            dialog->problem_.setText(toQt(problem));
            dialog->show();
        }
    });
}

} // namespace larkspin
