#include <string_view>
#include <typeindex>

#include <tolv/messages.h>
#include <tolv/msgs/introspection/detail/tables.h>

/// @file
/// What is known of fields beyond their types: units, and the meanings of particular numbers and
/// strings.
namespace Tolv::Msgs::Introspection::Detail {

namespace {

enum Others : bool { accepted, refused };

struct Annotation {
    std::type_index record;
    std::string_view key;
    char const* unit = "";
    std::vector<Literal> literals;
    Others others = accepted; ///< values other than the literals
};

/// The words of an enumeration with small numbers.
template <class E>
std::vector<Literal> wordsOf() {
    std::vector<Literal> words;
    for (int value = 0; value < 64; ++value)
        if (auto const word = wordOf(static_cast<E>(value)); !word.empty())
            words.push_back({std::string(word), value});
    return words;
}

/// The words that name the type of an attribute.
std::vector<Literal> attributeTypes() {
    std::vector<Literal> words;
    for (auto const& [word, id] : messageTypeMapper)
        words.push_back({word, static_cast<long long>(static_cast<unsigned long long>(id))});
    return words;
}

template <class R>
Annotation unit(std::string_view key, char const* unit) {
    return {typeid(R), key, unit, {}, accepted};
}

template <class R>
Annotation values(std::string_view key, std::vector<Literal> literals, Others others = accepted) {
    return {typeid(R), key, "", std::move(literals), others};
}

std::vector<Annotation> annotations() {
    using namespace Structs;
    std::vector<Literal> const testStates = {
        {"passed", 0}, {"failed", 1}, {"running", 2}, {"not run", 3}};
    return {
        unit<TriggerPulseOffset>("offset", "ms"),
        unit<TriggerPulseWidth>("width", "ms"),
        unit<Attrs::TraceSegment>("offset", "samples"),
        unit<Attrs::TraceSegment>("length", "samples"),
        unit<Attrs::StringMetaData>("MaxLength", "bytes"),
        unit<Attrs::IntVectorMetaData>("MaxLength", "elements"),
        unit<App::QmlFileListResponseData::FileMetaData>("FileSizeInBytes", "bytes"),
        unit<App::QmlFileResponseData>("FileOffset", "bytes"),
        unit<App::QmlFileResponseData>("FileSize", "bytes"),

        values<TriggerRoute>("output", wordsOf<TriggerOutputs>()),
        values<TriggerRoute>("source", wordsOf<TriggerSources>()),
        values<TriggerPulseOffset>("source", wordsOf<TriggerSources>()),
        values<TriggerPulseWidth>("source", wordsOf<TriggerSources>()),
        values<Attrs::AttrInfoData>("ScaType", attributeTypes()),
        values<SelftestData>("state", testStates, refused),
        values<SelftestTestState>("testState", testStates, refused),
        values<GPS>("Status", {{"no fix", 0},
                               {"standard", 1},
                               {"differential", 2},
                               {"precise", 3},
                               {"real-time kinematic", 4},
                               {"real-time kinematic, float", 5},
                               {"estimated", 6}}),
        values<App::HardwareComponent>("Type",
                                       {{"blank", 0}, {"port", 1}, {"display", 2}, {"control", 3}}),
        values<Errs::GenericErrorData>(
            "ErrorLevel", {{"information", 0}, {"warning", 1}, {"error", 2}, {"fatal", 3}}),
        values<Errs::GenericErrorData>("ErrorCategory", {{"general", 0},
                                                         {"hardware", 1},
                                                         {"measurement", 2},
                                                         {"calibration", 3},
                                                         {"configuration", 4},
                                                         {"communication", 5},
                                                         {"application", 6}}),
    };
}

} // namespace

void annotate(FieldDescription& field, std::type_index record) {
    if (field.type != nullptr && field.type->kind == TypeKind::word) {
        field.literals = field.type->literals;
        field.closed = true;
    }
    static auto const all = annotations();
    for (auto const& one : all) {
        if (one.record != record || one.key != field.key)
            continue;
        field.unit += one.unit;
        if (!one.literals.empty()) {
            field.literals = one.literals;
            field.closed = one.others == refused;
        }
    }
}

} // namespace Tolv::Msgs::Introspection::Detail
