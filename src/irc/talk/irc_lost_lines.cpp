#include "irc/talk/irc_lost_lines.h"

#include "chat/markup.h"
#include "host/typed_secrets.h"
#include "irc/connection/irc_session.h"
#include "text/number.h"
#include "text/utf8.h"
#include "text/visible.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr std::size_t longestTold = 100; // characters of a line

std::string shortened(const std::string& text) {
    const auto length = prefixLength(text, longestTold);
    return length == text.size() ? text : text.substr(0, length) + "\u2026";
}

std::string shownText(const IrcSaid& said) {
    return (said.kind == KeptLine::Kind::done ? "/me " : "") +
           shortened(plainMarkup(saidWithoutSecrets(said.target, said.text)));
}

} // namespace

void IrcLostLines::add(const IrcSaid& said, bool isOwners, bool isSure) {
    if (!isOwners) {
        if (std::ranges::find(untoldAnswers_, said.target) == untoldAnswers_.end())
            untoldAnswers_.push_back(said.target);
        return;
    }
    untold_.push_back({said, isSure});
    kept_.push_back(said);
    if (kept_.size() > mostKept)
        kept_.pop_front();
}

std::string IrcLostLines::place(const std::string& target) const {
    return (session_.features().isChannel(target) ? "in " : "to ") + visibleName(target);
}

void IrcLostLines::tell() {
    tellOwners();
    tellAnswers();
}

void IrcLostLines::tellOwners() {
    const std::vector<Lost> all = std::exchange(untold_, {});
    if (all.empty())
        return;
    if (all.size() <= mostNamed) {
        for (const auto& [said, isSure] : all)
            tell_((isSure ? "not said " : "perhaps not said ") + place(said.target) + ": " +
                  shownText(said));
    } else {
        for (std::size_t first = 0, end; first < all.size(); first = end) {
            const Lost& of = all[first];
            for (end = first; end < all.size() && all[end].said.target == of.said.target &&
                              all[end].isSure == of.isSure;)
                ++end;
            const auto count = static_cast<std::int64_t>(end - first);
            tell_(counted(count, "line") + " of yours " + (count == 1 ? "was " : "were ") +
                  (of.isSure ? "not said " : "perhaps not said ") + place(of.said.target));
        }
    }
    if (!std::exchange(hasToldHow_, true))
        tell_("/again says once more what was not said where you are");
}

// A room that refuses one line of a recital refuses each of them.
void IrcLostLines::tellAnswers() {
    for (const std::string& target : std::exchange(untoldAnswers_, {})) {
        if (target == quietAbout_ && loop_.now() < quietUntil_)
            continue;
        quietAbout_ = target;
        quietUntil_ = loop_.now() + betweenWords;
        tell_("part of an answer was not said " + place(target));
    }
}

void IrcLostLines::isFound(const IrcSaid& said) {
    const auto found = std::ranges::find_if(kept_, [&](const IrcSaid& kept) {
        return kept.kind == said.kind && kept.text == said.text &&
               session_.isSame(kept.target, said.target);
    });
    if (found == kept_.end())
        return;
    kept_.erase(found);
    tell_("said after all " + place(said.target) + ": " + shownText(said));
}

std::vector<IrcSaid> IrcLostLines::take(std::string_view target) {
    std::vector<IrcSaid> taken;
    for (const IrcSaid& said : kept_)
        if (session_.isSame(said.target, target))
            taken.push_back(said);
    std::erase_if(kept_, [&](const IrcSaid& said) { return session_.isSame(said.target, target); });
    return taken;
}

void IrcLostLines::rename(std::string_view from, const std::string& to) {
    for (IrcSaid& said : kept_)
        if (session_.isSame(said.target, from))
            said.target = to;
}

} // namespace larkspin
