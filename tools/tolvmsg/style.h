#pragma once

#include <cstdlib>
#include <string>
#include <string_view>

#include <unistd.h>

namespace Tolv::Tool {

/// Colours for terminals. NO_COLOR disables them if it is set to a non-empty text (see
/// no-color.org).
class Style {
public:
    static Style ofStandardOutput() {
        auto const* const off = std::getenv("NO_COLOR");
        auto const* const terminal = std::getenv("TERM");
        return Style(::isatty(STDOUT_FILENO) == 1 && (off == nullptr || *off == '\0') &&
                     (terminal == nullptr || std::string_view(terminal) != "dumb"));
    }

    [[nodiscard]] std::string name(std::string_view text) const { return in("1", text); }
    [[nodiscard]] std::string warning(std::string_view text) const { return in("33", text); }
    [[nodiscard]] std::string error(std::string_view text) const { return in("31", text); }

private:
    explicit Style(bool colours) : colours_(colours) {}

    [[nodiscard]] std::string in(std::string_view code, std::string_view text) const {
        if (!colours_)
            return std::string(text);
        return "\x1b[" + std::string(code) + 'm' + std::string(text) + "\x1b[0m";
    }

    bool colours_;
};

} // namespace Tolv::Tool
