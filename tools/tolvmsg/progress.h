#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "input.h"
#include "output.h"

namespace Tolv::Tool {

/// A progress bar on standard error. It appears only if standard error is a terminal and the work
/// takes some time. It is erased before output is written, and at the end.
class Progress {
public:
    static constexpr std::uint64_t muchWork = 4'000'000; ///< bytes

    /// Measures progress by the position in the input file. @param out must outlive this object
    Progress(Input const& input, Output& out);
    /// @param total bytes @param out must outlive this object
    Progress(std::uint64_t total, Output& out);
    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;
    ~Progress();

    /// Shows the current position. Cheap enough to be called often.
    void update() {
        if (total_ > 0 && isTime())
            show(position());
    }
    /// Shows the progress. @param done bytes
    void update(std::uint64_t done) {
        if (total_ > 0 && isTime())
            show(done);
    }

private:
    bool isTime();
    [[nodiscard]] std::uint64_t position() const;
    void show(std::uint64_t done);
    void erase();

    Output& out_;
    int descriptor_ = -1;
    std::uint64_t total_ = 0; ///< 0: no bar
    bool shown_ = false;
    std::chrono::steady_clock::time_point next_;
};

} // namespace Tolv::Tool
