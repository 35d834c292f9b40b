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

/// What became of one field of a record that was read, or of one key that no field has.
struct ReadEvent {
    /// How the read ended.
    enum class Outcome {
        read,       ///< the field has the value that stands there
        absent,     ///< there is no such key; the field is unset, or keeps its value if it checks
        unset,      ///< the key is there, and the field is unset
        kept,       ///< the key is there, and the field, a list or a checked value, is as it was
        threw,      ///< the field threw, which ends the read of its record
        unreadable, ///< no field, but a whole record: the element is no object
        unknownKey  ///< no field, but a key that nothing read
    };

    /// The key alone; empty for a record that isn't under one.
    std::string key;
    std::string path; ///< "Data.ComponentList[3].Type"; a key that is no plain word in quotes
    Outcome outcome = Outcome::read;       ///< how it ended
    bool required = false;                 ///< whether the field is a required one
    FieldInfo const* field = nullptr;      ///< what its record says of the field; null if none
    std::type_index record = typeid(void); ///< the class of its record; void where not known
    Element found;                         ///< what stands under the key; null when absent
    std::optional<unsigned int> entry;     ///< the last entry of a list of records that was read
    std::string reason;                    ///< the text of an exception; empty without one
    std::string cause; ///< path of the field inside that threw it; empty when there is none
};

/// While it lives, reads of records and messages on the thread that made it are recorded, field by
/// field. They give what they give without it.
///
///     ReadReport report;
///     auto const message = Msgs::Message::CreateFromMetaData(element);
///     for (auto const& problem : Msgs::Introspection::explain(report))
///         std::cout << problem.path << ": " << problem.problem << '\n';
///
/// Of two at a time, the later records. They end in reverse order, on their own thread. A thread
/// that has none is not slowed down by more than the load of a flag a record.
///
/// A report takes at most 64 bytes of memory for each byte of the text that is read, and a few
/// kilobytes; it shares the tree that is read, or has a copy of one that others may write to.
class TOLV_CORE_API ReadReport {
public:
    ReadReport();
    ReadReport(ReadReport const&) = delete;
    ReadReport& operator=(ReadReport const&) = delete;
    ~ReadReport();

    /// Calls `call` with each event so far: fields before what is inside of them, and behind all
    /// the keys that nothing read. One report may take several messages; paths are those inside of
    /// each. An event lives as long as the call.
    /// @throws std::bad_alloc, and what `call` throws
    void forEach(std::function<void(ReadEvent const&)> const& call) const;

    /// The first events, in the same order, at most `Limits::reportEntries`: a few bytes of text
    /// can make many. `size` tells whether there are more, and `forEach` gives them all.
    /// @throws std::bad_alloc
    [[nodiscard]] std::vector<ReadEvent> events() const;

    /// How many events there are. Takes as long as `forEach`. @throws std::bad_alloc
    [[nodiscard]] std::size_t size() const;

    /// Forgets what was read so far.
    void clear() noexcept;

    class Recorder;

private:
    std::unique_ptr<Recorder> recorder_;
};

} // namespace Tolv::MetaData
