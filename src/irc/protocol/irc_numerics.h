// The numbers that servers answer by, named by what they say, and the kinds of them.
#pragma once

#include "text/characters.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace larkspin::numeric {

inline constexpr std::string_view welcome = "001", features = "005";

// Answers to what was asked for.
inline constexpr std::string_view away = "301", isOn = "303", noTopic = "331", topic = "332",
                                  topicSetter = "333", inviting = "341", names = "353",
                                  endOfNames = "366", ban = "367", channelModes = "324",
                                  who = "352", whoWithFields = "354", endOfWho = "315",
                                  tryLater = "263";

// About names that the server watches.
inline constexpr std::string_view monitoredOffline = "731", monitorsFull = "734";

// Refusals.
inline constexpr std::string_view noSuchNick = "401", noSuchChannel = "403", cannotSend = "404",
                                  noCodes = "408", badCapability = "410", unknownCommand = "421",
                                  noGreeting = "422", noNickGiven = "431", badNick = "432",
                                  nickInUse = "433", nickCollision = "436", nickUnavailable = "437",
                                  notRegistered = "451", badPassword = "464", needsAccount = "477",
                                  needsAccountForNick = "486", needsVoice = "489",
                                  cannotSendToNick = "531", tooManyTargets = "407",
                                  tooManyInTime = "439", servicesDown = "440", noRequests = "492",
                                  ownMode = "494", heldBack = "716", badWord = "936",
                                  badModeParameter = "696";

// Somebody who takes no messages has been told that there was one.
inline constexpr std::string_view hasBeenTold = "717";

// Outcomes of a login.
inline constexpr std::string_view loggedIn = "900", loggedOut = "901", loginDone = "903",
                                  loginDoneBefore = "907", loginWays = "908";

inline bool isNumeric(std::string_view command) {
    return !command.empty() && isDigit(command.front());
}

// Every number of two hundreds counts, and three more: there are many reasons for a refusal, and
// servers have numbers of their own for some.
inline bool isRefusal(std::string_view command) {
    return command.size() == 3 &&
           (command.front() == '4' || command.front() == '5' || command == badModeParameter ||
            command == heldBack || command == badWord);
}

// A line to a channel or to somebody.
inline bool refusesLine(std::string_view command) {
    static constexpr std::string_view numbers[] = {
        noSuchNick,          noSuchChannel, cannotSend,       noCodes,        needsAccount,
        needsAccountForNick, needsVoice,    cannotSendToNick, tooManyTargets, tooManyInTime,
        servicesDown,        noRequests,    ownMode,          heldBack,       badWord};
    return std::ranges::find(numbers, command) != std::end(numbers);
}

// The numbers 900 to 909.
inline bool isAboutLogin(std::string_view command) {
    return command.starts_with("90");
}

} // namespace larkspin::numeric
