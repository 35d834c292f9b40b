#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include <tolv/core/metadata/detail/read_hooks.h>
#include <tolv/core/metadata/read_report.h>

namespace Tolv::MetaData {

namespace Detail {

/// Exists on the stack while the factory creates a message from `element`. That takes several walks
/// (the frame, then the payload), which reports treat as walks over one object.
class MessageRead {
public:
    explicit MessageRead(Element const& element) noexcept {
        if (anyReport()) [[unlikely]]
            begin(element);
    }
    MessageRead(MessageRead const&) = delete;
    MessageRead& operator=(MessageRead const&) = delete;
    ~MessageRead() {
        if (recorder_ != nullptr) [[unlikely]]
            end();
    }

private:
    friend class ReadReport::Recorder;

    void begin(Element const& element) noexcept;
    void end() noexcept;

    ReadReport::Recorder* recorder_ = nullptr;
    MessageRead* outer_ = nullptr;
    void const* frame_ = nullptr;   ///< the frame of the recorder at construction
    void const* content_ = nullptr; ///< the container of `element`
    std::uint32_t head_ = ~std::uint32_t{0};
};

} // namespace Detail

/// The recording end of a report.
///
/// Its memory is limited even for hostile text: each record that is read costs 56 bytes plus one
/// per field, whatever its content. Keys, types and paths of events are computed on request; the
/// values are in the tree, which the report shares.
class ReadReport::Recorder {
public:
    using Outcome = ReadEvent::Outcome;

    /// The recorder of this thread; null if it has no report.
    static Recorder* current() noexcept;

    Recorder();
    Recorder(Recorder const&) = delete;
    Recorder& operator=(Recorder const&) = delete;
    ~Recorder();

    /// Reads the fields of a record from `element`, in order. @throws what they throw
    void read(std::span<ReflectorBase* const> fields, std::type_info const& record,
              Element const& element);

    void swallowed() noexcept;
    void kept() noexcept;

    void forEach(std::function<void(ReadEvent const&)> const& call) const;
    [[nodiscard]] std::size_t size() const;
    void clear() noexcept;

private:
    friend class Detail::MessageRead;
    struct Frame;

    static constexpr std::uint32_t none = ~std::uint32_t{0};

    /// The common data of all records of one class.
    struct Shape {
        struct Field {
            FieldInfo const* info;
            bool isRequired;

            bool operator==(Field const&) const = default;
        };

        std::type_info const* record;
        std::vector<Field> fields;
    };

    /// A walk over the fields of a record.
    struct Read {
        Element element; ///< the element at the time of the read
        Shape const* shape = nullptr;
        std::size_t outcomes = 0;    ///< position of the first outcome of its fields
        std::uint32_t parent = none; ///< the enclosing walk
        std::uint32_t sequel = none; ///< the next walk over the same object
        std::uint32_t prefix = 0;    ///< the path from the field of the parent to a list or object
        std::uint32_t entry = none;  ///< the index in that list
        std::uint16_t field = 0;     ///< the index of the field of the parent
        bool isSequel = false;       ///< whether this is not the first walk over this object
    };

    using FieldOfRead = std::pair<std::uint32_t, std::uint16_t>;

    /// Details that only few fields have.
    struct Note {
        std::uint32_t entry = none;
        FieldOfRead cause{none, 0};
        std::string reason;
    };

    void read(Frame& frame, std::uint16_t index, ReflectorBase& field);
    void open(Frame& frame, std::span<ReflectorBase* const> fields, std::type_info const& record);
    void place(Frame& frame, Read& read, Key const& firstKey);
    void locate(Frame& frame, Read& read);
    void continueObject(Read& read, std::uint32_t head);
    [[nodiscard]] bool hasField(std::uint32_t head, std::string_view key) const;
    Shape const& shapeOf(std::span<ReflectorBase* const> fields, std::type_info const& record);
    void noteException(Frame const& frame);
    [[nodiscard]] std::uint8_t& outcome(Frame const& frame);

    template <class OnRead, class OnField>
    void walk(OnRead const& onRead, OnField const& onField) const;
    template <class OnKey>
    void walkUnknownKeys(OnKey const& onKey) const;
    void appendStep(std::string& path, Read const& read) const;
    [[nodiscard]] std::string pathOf(std::uint32_t read) const;

    Recorder* const outer_;
    Frame* frame_ = nullptr;                 ///< the innermost record being read
    Detail::MessageRead* message_ = nullptr; ///< the innermost message being read
    FieldOfRead thrower_{none, 0};           ///< the field that the last exception left
    std::uint32_t head_ = none;              ///< the first walk over the latest object
    std::multimap<std::pair<std::type_info const*, FieldInfo const*>, Shape>
        shapes_; ///< by first field
    std::deque<Read> reads_;
    std::deque<std::uint8_t> outcomes_;
    std::map<FieldOfRead, Note> notes_;
    std::vector<std::string> prefixes_;
};

} // namespace Tolv::MetaData
