// The roads of this library.
#include <map>
#include <vector>

#include <tolv/core/metadata/json.h>

#include "payloads.h"
#include "roads.h"

namespace Tolv::Bench {
namespace {

using Msgs::Message;

Prepared reading(std::string text) {
    return readingWith([text = std::move(text)] { return fromText(text); });
}

template <class M>
Prepared writing(M const& message) {
    return writingWith([message = std::make_shared<M>(message), text = std::string()]() mutable {
        toText(*message, text);
        keep(text);
    });
}

/// The two roads, to text and back, of the message that `make` returns.
template <class Make>
void enterBoth(std::string const& name, Make make) {
    roads().push_back({name + " read/ours", [make] { return reading(textOf(make())); }});
    roads().push_back({name + " write/ours", [make] { return writing(make()); }});
}

/// Only the factory. Each thread has a tree of its own, as if it had read it.
Prepared creating() {
    MetaData::Element tree;
    MetaData::ReaderJson::Read(tree, connectText());
    return readingWith([tree] { return Message::CreateFromMetaData(tree); });
}

template <class T>
Prepared building() {
    // Not with readingWith(), which would also count a move.
    return writingWith([] {
        T const object;
        keep(object);
    });
}

// ---- Batches ---------------------------------------------------------------------------------

std::vector<std::string> singleTexts(std::size_t count, bool described) {
    std::vector<std::string> texts(count);
    for (std::size_t i = 0; i < count; ++i)
        toText(number(i, described), texts[i]);
    return texts;
}

Prepared readingSingles(bool described) {
    return readingWith([texts = singleTexts(batchSize, described)] {
        std::vector<std::shared_ptr<Message>> messages;
        messages.reserve(texts.size());
        for (auto const& text : texts)
            messages.push_back(fromText(text));
        return messages;
    });
}

Prepared writingSingles(bool described) {
    std::vector<std::shared_ptr<Message>> messages;
    for (auto const& text : singleTexts(batchSize, described))
        messages.push_back(fromText(text));
    return writingWith([messages, texts = std::vector<std::string>(batchSize)]() mutable {
        for (std::size_t i = 0; i < messages.size(); ++i)
            toText(*messages[i], texts[i]);
        keep(texts);
    });
}

void enterBatches(std::string const& name, bool described) {
    auto const made = [described] { return batch(batchSize, described); };
    roads().push_back({name + " read/ours", [made] { return reading(textOf(made())); }, batchSize});
    roads().push_back({name + " write/ours", [made] { return writing(made()); }, batchSize});
    roads().push_back(
        {name + " read/singles", [=] { return readingSingles(described); }, batchSize});
    roads().push_back(
        {name + " write/singles", [=] { return writingSingles(described); }, batchSize});
}

// ---- Series of sizes, for the plot -----------------------------------------------------------

/// A record with any number of fields.
class Wide : public MetaData::MirroredObject {
public:
    explicit Wide(std::size_t count) {
        fields_.reserve(count);
        for (std::size_t i = 0; i < count; ++i)
            fields_.push_back(std::make_unique<MetaData::Reflector<int>>(
                this, MetaData::Key::intern("Field" + std::to_string(i)), MetaData::Required,
                static_cast<int>(i)));
    }
    Wide(Wide const&) = delete;
    Wide& operator=(Wide const&) = delete;
    ~Wide() override {
        while (!fields_.empty())
            fields_.pop_back(); // the newest first, as members of a class
    }

private:
    std::vector<std::unique_ptr<MetaData::Reflector<int>>> fields_;
};

Prepared readingWide(std::size_t count) {
    auto const wide = std::make_shared<Wide>(count);
    std::string text;
    wide->copyToText(text);
    return writingWith([wide, text] {
        wide->copyFromText(text);
        keep(*wide);
    });
}

Prepared writingWide(std::size_t count) {
    return writingWith([wide = std::make_shared<Wide>(count), text = std::string()]() mutable {
        wide->copyToText(text);
        keep(text);
    });
}

/// The sizes are 1, 3, 10, 30, ... from `least` to `most`.
template <class EnterOne>
void enterSeries(std::string const& name, std::size_t least, std::size_t most, EnterOne enterOne) {
    for (auto size = least; size <= most; size *= 10)
        for (auto const part : {size, 3 * size})
            if (part <= most)
                enterOne("scale/" + name, std::to_string(part), part);
}

void enterScales() {
    using std::string;
    enterSeries("fields", 1, 10'000, [](string const& name, string const& size, std::size_t count) {
        roads().push_back({name + " read/" + size, [=] { return readingWide(count); }});
        roads().push_back({name + " write/" + size, [=] { return writingWide(count); }});
    });
    auto const both = [](auto make) {
        return [make](string const& name, string const& size, std::size_t count) {
            roads().push_back(
                {name + " read/" + size, [=] { return reading(textOf(make(count))); }});
            roads().push_back({name + " write/" + size, [=] { return writing(make(count)); }});
        };
    };
    enterSeries("list entries", 1, 10'000, both(&properties));
    enterSeries("batch entries", 1, 10'000, both([](auto count) { return batch(count, false); }));
    enterSeries("samples", 10, 10'000'000, both(&trace));
    enterSeries("plain samples", 10, 1'000'000, both(&plainTrace));
    // The cost of memory alone.
    enterSeries("samples", 10, 10'000'000,
                [](string const& name, string const& size, std::size_t count) {
                    roads().push_back({name + " copied/" + size, [=] {
                                           return readingWith([from = std::vector(count, 1.5)] {
                                               return std::vector(from);
                                           });
                                       }});
                });
}

bool const entered = [] {
    enterBoth("S", &connect);
    enterBoth("number", [] { return number(0, false); });
    enterBoth("number with metadata", [] { return number(0, true); });
    enterBoth("M", [] { return properties(resourceCount); });
    enterBoth("T", [] { return trace(sampleCount); });
    enterBoth("P", [] { return plainTrace(sampleCount); });
    enterBatches("batch", false);
    enterBatches("batch with metadata", true);
    roads().push_back({"create/ours", &creating, 1, {1, 2, 4, 8}});
    roads().push_back({"build record/ours", &building<Msgs::App::Connect>});
    roads().push_back({"build message/ours", &building<Msgs::App::ConnectMessage>});
    enterScales();
    return true;
}();

} // namespace
} // namespace Tolv::Bench
