#pragma once

#include <span>

#include <tolv/core/metadata/detail/read_hooks.h>
#include <tolv/core/metadata/read_report.h>

namespace Tolv::MetaData {

/// The recording end of a report.
class ReadReport::Recorder {
public:
    /// Of this thread; null when it has no report.
    static Recorder* current() noexcept;

    Recorder();
    Recorder(Recorder const&) = delete;
    Recorder& operator=(Recorder const&) = delete;
    ~Recorder();

    /// Has the fields of a record read themselves from `element`, in order. @throws what they throw
    void read(std::span<ReflectorBase* const> fields, std::type_index record,
              Element const& element);

    void swallowed() noexcept;
    void kept() noexcept;

    [[nodiscard]] std::vector<ReadEvent> events() const;
    void clear() noexcept;

private:
    struct Frame;
    struct Object;

    void read(Frame& frame, ReflectorBase& field);
    /// @param key of the first field
    void open(Frame& frame, Key const& key);

    Recorder* const outer_;
    Frame* frame_ = nullptr; ///< the record that is being read, the innermost
    std::vector<ReadEvent> events_;
    std::vector<Object> objects_; ///< those that records were read from
};

} // namespace Tolv::MetaData
