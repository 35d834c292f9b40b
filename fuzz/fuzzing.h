#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>

/// Common to all fuzz targets.
namespace Tolv::Fuzzing {

/// Ends the program, which a fuzzer reports as a finding.
inline void require(bool holds, char const* what) {
    if (!holds) {
        std::fprintf(stderr, "%s\n", what);
        std::abort();
    }
}

/// Discards the lines that array fields print; printing would take most of the time.
inline void silenceDiagnostics() { std::cout.rdbuf(nullptr); }

/// An input that is consumed from the front; zeros follow its end.
class Input {
public:
    Input(std::uint8_t const* data, std::size_t size)
        : rest_(reinterpret_cast<char const*>(data), size) {}

    [[nodiscard]] bool empty() const { return at_ == rest_.size(); }

    template <class T>
    T take() {
        T value{};
        auto const size = std::min(sizeof value, rest_.size() - at_);
        std::memcpy(&value, rest_.data() + at_, size);
        at_ += size;
        return value;
    }

    /// A number below `bound`, which is not 0.
    std::size_t below(std::size_t bound) {
        return bound > 256 ? take<std::uint16_t>() % bound : take<std::uint8_t>() % bound;
    }

    /// The text before the next `end`, which is consumed too.
    std::string until(char end) {
        auto const stop = std::min(rest_.find(end, at_), rest_.size());
        auto text = rest_.substr(at_, stop - at_);
        at_ = std::min(stop + 1, rest_.size());
        return text;
    }

    std::string rest() {
        auto text = rest_.substr(at_);
        at_ = rest_.size();
        return text;
    }

private:
    std::string rest_;
    std::size_t at_ = 0;
};

} // namespace Tolv::Fuzzing
