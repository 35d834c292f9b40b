#include <memory>
#include <mutex>
#include <shared_mutex>
#include <unordered_map>

#include <tolv/core/metadata/key.h>

namespace Tolv::MetaData {

namespace {

/// A key made at run time, with the text that it views.
struct InternedKey {
    explicit InternedKey(std::string_view from) : text(from), key(text) {}

    std::string const text;
    Key const key;
};

class InternedKeys {
public:
    InternedKey const& get(std::string_view text) {
        {
            std::shared_lock const lock(mutex_);
            if (auto const found = keys_.find(text); found != keys_.end())
                return *found->second;
        }
        auto made = std::make_unique<InternedKey const>(text);
        std::unique_lock const lock(mutex_);
        std::string_view const name = made->text;
        return *keys_.try_emplace(name, std::move(made)).first->second;
    }

private:
    std::shared_mutex mutex_;
    std::unordered_map<std::string_view, std::unique_ptr<InternedKey const>> keys_;
};

InternedKeys& internedKeys() {
    // Never destroyed: fields with such keys may be destroyed after all statics of this library.
    static auto* const keys = new InternedKeys;
    return *keys;
}

} // namespace

Key const& Key::intern(std::string_view text) { return internedKeys().get(text).key; }

std::string const& Key::name() const { return internedKeys().get(text()).text; }

} // namespace Tolv::MetaData
