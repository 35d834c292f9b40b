// The roads of Protocol Buffers, in JSON and in their own binary form.
#include <stdexcept>

#include <google/protobuf/util/json_util.h>
#include <messages.pb.h>

#include "payloads.h"
#include "roads.h"

namespace Tolv::Bench {
namespace {

namespace pb = google::protobuf;
using TextOf = std::string const& (*)();

void require(bool good) {
    if (!good)
        throw std::logic_error("Protocol Buffers refuse a message");
}

template <class M>
M fromJson(std::string const& text) {
    M message;
    require(pb::util::JsonStringToMessage(text, &message).ok());
    return message;
}

template <class M>
M fromBinary(std::string const& bytes) {
    M message;
    require(message.ParseFromString(bytes));
    return message;
}

/// All fields, including those with the value zero, as our writer does.
template <class M>
void toJson(M const& message, std::string& text) {
    pb::util::JsonPrintOptions options;
    options.always_print_primitive_fields = true;
    text.clear();
    require(pb::util::MessageToJsonString(message, &text, options).ok());
    keep(text);
}

template <class M>
void toBinary(M const& message, std::string& bytes) {
    require(message.SerializeToString(&bytes));
    keep(bytes);
}

template <class M>
void enterBinary(std::string const& road, M (*make)()) {
    roads().push_back({road + " read/Protobuf binary", [make] {
                           return readingWith([bytes = make().SerializeAsString()] {
                               return fromBinary<M>(bytes);
                           });
                       }});
    roads().push_back({road + " write/Protobuf binary", [make] {
                           return writingWith([message = make(), text = std::string()]() mutable {
                               toBinary(message, text);
                           });
                       }});
}

template <class M>
void enterJson(std::string const& road, M (*make)(), TextOf text) {
    roads().push_back({road + " read/Protobuf JSON", [text] {
                           return readingWith([&json = text()] { return fromJson<M>(json); });
                       }});
    roads().push_back({road + " write/Protobuf JSON", [make] {
                           return writingWith([message = make(), json = std::string()]() mutable {
                               toJson(message, json);
                           });
                       }});
}

tolv_bench::Connect pbConnect() { return fromJson<tolv_bench::Connect>(connectText()); }
tolv_bench::Properties pbProperties() { return fromJson<tolv_bench::Properties>(propertiesText()); }
tolv_bench::Trace pbTrace() {
    auto const message = trace(sampleCount);
    auto const& samples = message.payload().trace();
    tolv_bench::Trace result;
    result.set_id(static_cast<unsigned long long>(message.id()));
    result.mutable_data()->mutable_trace()->Add(samples.begin(), samples.end());
    return result;
}

bool const entered = [] {
    enterJson("S", &pbConnect, &connectText);
    enterBinary("S", &pbConnect);
    enterJson("M", &pbProperties, &propertiesText);
    enterBinary("M", &pbProperties);
    enterJson("P", &pbTrace, &plainTraceText);
    enterBinary("T", &pbTrace);
    return true;
}();

} // namespace
} // namespace Tolv::Bench
