// The form for going to a network as a dialog. It stays open, and tells why, while what is filled
// in makes no sense.
#pragma once

#include "irc/client/irc_connect_form.h"
#include "shell/event_loop.h"

#include <QDialog>
#include <string>
#include <vector>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QSpinBox;

namespace larkspin {

class IrcNetworks;

class ConnectDialog : public QDialog {
public:
    // All must outlive it. The name is the one that a network not known yet is offered.
    ConnectDialog(EventLoop& loop, IrcNetworks& networks, std::string ownName, QWidget* parent);

    // Begins anew, with the networks that are known now.
    void refresh();

private:
    void layOut();
    void listen();
    void fill(const IrcConnectForm& form);
    IrcConnectForm filledIn() const;
    void showKnown(int number);
    void encryptionChanged(bool isOn);
    void goThere();

    EventLoop& loop_;
    IrcNetworks& networks_;
    std::string ownName_;
    QComboBox& network_; // these belong to the layout
    QLineEdit& host_;
    QCheckBox& encrypted_;
    QSpinBox& port_;
    QLineEdit& nick_;
    QLineEdit& rooms_;
    QLineEdit& user_;
    QLineEdit& password_;
    QCheckBox& keepsPassword_;
    QCheckBox& atStart_;
    QLabel& problem_;
    std::vector<std::string> known_; // their names, as they stand in the list
};

} // namespace larkspin
