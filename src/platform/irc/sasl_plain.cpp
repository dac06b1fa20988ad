#include "platform/irc/sasl_plain.h"

#include <glib.h>
#include <memory>

namespace larkspin {

namespace {

constexpr std::size_t longest = 400;

std::string base64(const std::string& bytes) {
    const std::unique_ptr<gchar, decltype(&g_free)> text(
        g_base64_encode(reinterpret_cast<const guchar*>(bytes.data()), bytes.size()), g_free);
    return text.get();
}

} // namespace

std::vector<std::string> saslPlainLines(std::string_view account, std::string_view password) {
    std::string both(1, '\0'); // as nobody but the account itself
    both.append(account).append(1, '\0').append(password);
    const std::string text = base64(both);
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size(); at += longest)
        lines.push_back(text.substr(at, longest));
    if (lines.back().size() == longest)
        lines.emplace_back("+");
    return lines;
}

} // namespace larkspin
