#include <attributes/analyzer.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include <attributes/attributes.h>

namespace Example {

using namespace Tolv::Msgs;
using Shared = std::shared_ptr<Attributes>;

namespace {

std::shared_ptr<Attrs::DoubleMessage> inHertz(std::string const& name, double value, double lowest,
                                              double highest) {
    auto message = std::make_shared<Attrs::DoubleMessage>();
    auto& attribute = message->editPayload();
    attribute.value = value;
    auto& about = attribute.editMetaData();
    about.name = name;
    about.broadcastUnits = {"Hz", "kHz", "MHz"};
    about.currentBroadcastUnit = "Hz";
    about.precision = 3;
    about.minimum = lowest;
    about.maximum = highest;
    return message;
}

std::shared_ptr<Attrs::EnumMessage> mode() {
    auto message = std::make_shared<Attrs::EnumMessage>();
    auto& attribute = message->editPayload();
    attribute.value = Attrs::EnumVal(0, "spectrum");
    attribute.enums = {{0, "spectrum"}, {1, "zero span"}, {2, "vector"}};
    auto& about = attribute.editMetaData();
    about.name = "mode";
    about.disabledList = {false, false, true}; // the option for "vector" is not installed
    return message;
}

std::shared_ptr<Attrs::StringMessage> label() {
    auto message = std::make_shared<Attrs::StringMessage>();
    auto& attribute = message->editPayload();
    attribute.value = "bench 7";
    auto& about = attribute.editMetaData();
    about.name = "label";
    about.maxLength = 16;
    about.validCharacters = "[A-Za-z0-9 ]*"; // an expression for the whole text
    return message;
}

std::shared_ptr<Attrs::MeasurementMessage> temperature(double celsius) {
    auto message = std::make_shared<Attrs::MeasurementMessage>();
    auto& attribute = message->editPayload();
    attribute.value = celsius;
    attribute.editMetaData().name = "temperature";
    attribute.editMetaData().currentBroadcastUnit = "degC";
    return message;
}

std::shared_ptr<Attrs::SegmentedComplexTraceMessage> trace() {
    auto message = std::make_shared<Attrs::SegmentedComplexTraceMessage>();
    auto& attribute = message->editPayload();
    attribute.trace = simulatedSamples();
    attribute.segments = {{0, 60'000}, {60'000, 40'000}};
    attribute.editMetaData().name = "trace";
    attribute.editMetaData().currentBroadcastUnit = "V";
    return message;
}

/// The samples from `begin` on, at most `number`, and what the segments have of them.
std::shared_ptr<Attrs::SegmentedComplexTraceMessage>
part(Attrs::SegmentedComplexTraceMessage const& whole, std::size_t begin, std::size_t number) {
    auto const& samples = whole.payload().trace();
    begin = std::min(begin, samples.size());
    auto const end = begin + std::min(number, samples.size() - begin);

    auto message = std::make_shared<Attrs::SegmentedComplexTraceMessage>();
    auto& attribute = message->editPayload();
    attribute.attributeMetaData = whole.payload().attributeMetaData;
    attribute.trace.edit().assign(samples.data() + begin, samples.data() + end);
    for (auto const& segment : whole.payload().segments()) {
        auto const first = std::max<std::size_t>(begin, segment.offset());
        auto const last = std::min<std::size_t>(end, segment.offset() + segment.length());
        if (first < last)
            attribute.segments.edit().emplace_back(first - begin, last - first);
    }
    return message;
}

/// Values that a client sends: they are stored, and go back as they are now.
template <class M>
void offerSetting(Service& service, Shared const& attributes) {
    service.on<M>([&service, attributes](M const& wanted) {
        auto const name = partFor(wanted);
        auto const changed = attributes->withValueOf(wanted, name);
        attributes->put(name, changed);
        service.send(M(changed->payload(), {"instrument", name}, {}));
    });
}

/// A batch of values: either all are stored, or none.
void offerSettingBatches(Service& service, Shared const& attributes) {
    service.on<Attrs::DoubleBatchMessage>([&service, attributes](auto const& wanted) {
        MessagesArray<Attrs::DoubleMessage> answer;
        for (auto const& one : wanted.payload().messages()) {
            auto const name = partFor(one);
            auto const changed = attributes->withValueOf(one, name);
            answer.messages.edit().emplace_back(changed->payload(), Address{"instrument", name});
        }
        for (auto const& one : answer.messages())
            attributes->put(one.sender()[1], std::make_shared<Attrs::DoubleMessage>(one.payload()));
        service.send(Attrs::DoubleBatchMessage(answer));
    });
}

void offerReading(Service& service, Shared const& attributes) {
    service.on<Attrs::AttrInfoRequestMessage>([&service, attributes](auto const& request) {
        if (auto const name = partFor(request); !name.empty())
            service.send(Attrs::AttrInfoMessage(attributes->describe(name)));
        else
            service.send(Attrs::AttrInfoListMessage(attributes->describe()));
    });
    service.on<Attrs::AttrListRequestMessage>([&service, attributes](auto const& request) {
        auto const name = partFor(request);
        Attrs::ArrayDataPolymorphic<Attrs::AttrMessage> list;
        if (name.empty())
            list.attributes = attributes->all();
        else
            list.attributes = {attributes->at(name)};
        service.send(Attrs::AttrListMessage(list));
    });
    // A range of an attribute is a range of its samples; only a trace has any.
    service.on<Attrs::AttrRangeRequestMessage>([&service, attributes](auto const& request) {
        auto const name = partFor(request);
        auto const whole =
            std::dynamic_pointer_cast<Attrs::SegmentedComplexTraceMessage>(attributes->at(name));
        if (whole == nullptr)
            throw Tolv::Exception::InvalidParameter(name + ": this attribute has no samples");
        auto const& range = request.payload();
        Attrs::ArrayWithRangeResponseData answer;
        answer.setOffset(range.offset());
        answer.attributes = {part(*whole, range.offset(), range.number())};
        service.send(Attrs::AttrRangeMessage(answer));
    });
}

/// A client that registers is told of changes. The one attribute that changes by itself is the
/// temperature: the simulated instrument warms up soon afterwards.
void offerChanges(Service& service, Shared const& attributes) {
    service.on<Attrs::RegisterMessage>([&service, attributes](auto const& request) {
        auto const name = partFor(request);
        service.send(Attrs::RegisteredMessage(Attrs::RegistrationData(attributes->contains(name))));
        if (name != "temperature")
            return;
        service.later(std::chrono::milliseconds(30), [&service, attributes, name] {
            attributes->put(name, temperature(41.5));
            service.send(Notifs::AttrValueChangedNotification({"instrument", name}, {}));
        });
    });
}

} // namespace

std::vector<std::complex<double>> simulatedSamples() {
    std::vector<std::complex<double>> samples(100'000);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        auto const time = static_cast<double>(i) / 1000;
        samples[i] = std::polar(1 / (1 + time), time * time);
    }
    return samples;
}

void offerAnalyzer(Service& service) {
    auto const attributes = std::make_shared<Attributes>();
    attributes->put("frequency", inHertz("frequency", 1e9, 9e3, 6e9));
    attributes->put("span", inHertz("span", 1e6, 1e3, 1e8));
    attributes->put("mode", mode());
    attributes->put("label", label());
    attributes->put("temperature", temperature(38.0));
    attributes->put("trace", trace());

    offerReading(service, attributes);
    offerSetting<Attrs::DoubleMessage>(service, attributes);
    offerSetting<Attrs::EnumMessage>(service, attributes);
    offerSetting<Attrs::StringMessage>(service, attributes);
    offerSettingBatches(service, attributes);
    offerChanges(service, attributes);
}

} // namespace Example
