#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <typeindex>
#include <vector>

#include <tolv/core/export.h>
#include <tolv/core/metadata/element.h>

namespace Tolv::MetaData {

class FieldInfo;

/// The outcome for one field of a record that was read, or for one key that no field has.
struct ReadEvent {
    /// How the read ended.
    enum class Outcome {
        read,       ///< the field has the value from the input
        absent,     ///< the key is absent; the field is unset, or a checked field keeps its value
        unset,      ///< the key is present, but the field is unset
        kept,       ///< the key is present, but the field, a list or a checked value, is unchanged
        threw,      ///< the field threw, which ends the read of its record
        unreadable, ///< the event is about a whole record: the element is not an object
        unknownKey  ///< the event is about a key that no field has
    };

    /// The key alone; empty for a record that is not stored under a key.
    std::string key;
    std::string path; ///< "Data.ComponentList[3].Type"; keys that are not plain words are quoted
    Outcome outcome = Outcome::read;       ///< how it ended
    bool required = false;                 ///< whether the field is required
    FieldInfo const* field = nullptr;      ///< what its record says of the field; null if none
    std::type_index record = typeid(void); ///< the class of its record; void if unknown
    Element found;                         ///< the value of the key; null if absent
    std::optional<unsigned int> entry;     ///< in a list of records, the last entry that was read
    std::string reason;                    ///< the text of the exception; empty if there was none
    std::string cause; ///< path of the nested field that threw it; empty if there is none
};

/// While a report exists, it records all reads of records and messages on the thread that created
/// it, field by field. The results of the reads are the same as without it.
///
///     ReadReport report;
///     auto const message = Msgs::Message::CreateFromMetaData(element);
///     for (auto const& problem : Msgs::Introspection::explain(report))
///         std::cout << problem.path << ": " << problem.problem << '\n';
///
/// Reports can be nested; only the innermost one records. Destroy them in reverse order, on their
/// own thread. A thread without a report only pays for loading a flag per record.
///
/// A report takes a few kilobytes, and at most 64 bytes of memory per byte of text that is read. It
/// shares the tree that is read, or copies one that others may write to.
class TOLV_CORE_API ReadReport {
public:
    ReadReport();
    ReadReport(ReadReport const&) = delete;
    ReadReport& operator=(ReadReport const&) = delete;
    ~ReadReport();

    /// Calls `call` with each event so far: each field before the fields nested in it, and unknown
    /// keys last. A report may cover several messages; each path starts at its own message. An
    /// event is valid only during the call.
    /// @throws std::bad_alloc, and whatever `call` throws
    void forEach(std::function<void(ReadEvent const&)> const& call) const;

    /// The first events in the same order, at most `Limits::reportEntries`, because a short text
    /// can cause many. `size` tells whether there are more; `forEach` visits all of them.
    /// @throws std::bad_alloc
    [[nodiscard]] std::vector<ReadEvent> events() const;

    /// The number of events. Takes as long as `forEach`. @throws std::bad_alloc
    [[nodiscard]] std::size_t size() const;

    /// Discards all events so far.
    void clear() noexcept;

    class Recorder;

private:
    std::unique_ptr<Recorder> recorder_;
};

} // namespace Tolv::MetaData
