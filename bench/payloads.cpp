#include "payloads.h"

#include <random>
#include <vector>

namespace Tolv::Bench {

using Msgs::Address;

Msgs::App::ConnectMessage connect() {
    return Msgs::App::ConnectMessage({}, {"client", "ui"}, {"instrument", "service"});
}

Msgs::App::AppPropertiesResponseMessage properties(std::size_t count) {
    using Data = Msgs::App::AppPropertiesResponseData;
    Msgs::App::AppPropertiesResponseMessage message({"instrument", "service"}, {"client", "ui"});
    auto& data = message.editPayload();
    data.name = std::string("Spectrum analyzer");
    data.description = std::string("Shows the power over the frequency");
    data.icon = Data::IconData("image/png", "spectrum.png");
    data.version = std::string("4.12.0");
    auto& resources = data.requiredResources.edit();
    resources.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        auto const at = std::to_string(i);
        Data::ResourceDefinition resource;
        resource.name = "Receiver " + at;
        resource.id = "receiver." + at;
        resource.description = std::string("A \"receiver\" with a range of 9 kHz to 6 GHz");
        resource.required = i % 3 != 0;
        resource.matchingIds = std::vector<std::string>{"slot1.rx" + at, "slot2.rx" + at};
        resources.push_back(resource);
    }
    return message;
}

Msgs::Attrs::DoubleMessage number(std::size_t index, bool described) {
    Msgs::Attrs::DoubleMessage message(2.4e9 + 1.25 * static_cast<double>(index),
                                       {"instrument", "analyzer"}, {"client", "panel"});
    if (!described)
        return message;
    auto& metaData = message.editPayload().editMetaData();
    metaData.name = "Frequency of marker " + std::to_string(index);
    metaData.controlAttrId = Address{"instrument", "analyzer", "frequency"};
    metaData.broadcastUnits = std::vector<std::string>{"Hz", "kHz", "MHz", "GHz"};
    metaData.currentBroadcastUnit = std::string("GHz");
    metaData.precision = 6;
    metaData.minimum = 9e3;
    metaData.maximum = 6e9;
    metaData.step = 0.1;
    metaData.stepDimensionless = false;
    return message;
}

Msgs::Attrs::DoubleTraceMessage trace(std::size_t count) {
    std::mt19937_64 random(2);
    std::normal_distribution<double> samples(0, 100);
    std::vector<double> values(count);
    for (auto& value : values)
        value = samples(random);
    Msgs::Attrs::DoubleTraceMessage message;
    message.editPayload().trace = values;
    return message;
}

Msgs::Attrs::DoubleTraceMessage plainTrace(std::size_t count) {
    auto const message = trace(count);
    auto const& samples = message.payload().trace();
    MetaData::Element tree;
    MetaData::Array& array = tree["Data"]["trace"];
    array.resize(static_cast<unsigned int>(samples.size()));
    for (unsigned int i = 0; i < array.size(); ++i)
        array[i].setFloating(samples[i]);
    Msgs::Attrs::DoubleTraceMessage plain;
    plain.Data.assign(tree);
    return plain;
}

Msgs::Attrs::DoubleBatchMessage batch(std::size_t count, bool described) {
    Msgs::Attrs::DoubleBatchMessage message;
    auto& numbers = message.editPayload().messages.edit();
    numbers.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        numbers.push_back(number(i, described));
    return message;
}

std::string const& connectText() {
    static auto const text = textOf(connect());
    return text;
}

std::string const& propertiesText() {
    static auto const text = textOf(properties(resourceCount));
    return text;
}

std::string const& traceText() {
    static auto const text = textOf(trace(sampleCount));
    return text;
}

std::string const& plainTraceText() {
    static auto const text = textOf(plainTrace(sampleCount));
    return text;
}

} // namespace Tolv::Bench
