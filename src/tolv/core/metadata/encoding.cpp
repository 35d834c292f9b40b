#include <new>
#include <utility>

#include <tolv/core/base64.h>
#include <tolv/core/metadata/detail/encoding.h>
#include <tolv/core/metadata/detail/encoding_scope.h>
#include <tolv/core/metadata/detail/tree.h>

namespace Tolv::MetaData::Detail {

namespace {

thread_local constinit EncodingScope* innermost = nullptr;

/// The smallest block, in bytes, whose encoding is worth deferring.
constexpr std::size_t leastDeferred = 4096;

} // namespace

EncodingScope::EncodingScope(MirroredObject const& root) noexcept
    : outer_(std::exchange(innermost, this)), root_(&root) {}

EncodingScope::~EncodingScope() {
    innermost = outer_;
    for (auto const& element : noted_) {
        auto* const text = static_cast<DeferredText*>(Access::longText(element));
        auto const isTaken = text->refs.load(std::memory_order_acquire) != 1;
        if (!isTaken || text->text != nullptr)
            continue;
        try {
            text->encode();
        } catch (std::bad_alloc const&) {
            text->size = 0; // the bytes may be destroyed soon
            text->bytes = {};
        }
    }
}

EncodingScope* EncodingScope::current() noexcept { return innermost; }

void EncodingScope::put(Element& element, std::span<unsigned char const> bytes) {
    auto& noted = noted_.emplace_back();
    try {
        Access::putDeferredText(noted, bytes);
    } catch (...) {
        noted_.pop_back();
        throw;
    }
    element = noted;
}

LastingFields::LastingFields(MirroredObject const& message) noexcept {
    auto* const scope = EncodingScope::current();
    if (scope == nullptr || !scope->isRoot(message))
        return;
    outer_ = scope->setLasting(&message);
    isKnown_ = true;
}

LastingFields::LastingFields(ReflectorBase const& field, MirroredObject const& value) noexcept {
    auto* const scope = EncodingScope::current();
    if (scope == nullptr || !scope->isLasting(field))
        return;
    outer_ = scope->setLasting(&value);
    isKnown_ = true;
}

LastingFields::~LastingFields() {
    if (isKnown_)
        EncodingScope::current()->setLasting(outer_);
}

void putEncoded(Element& element, std::span<unsigned char const> bytes,
                ReflectorBase const* field) {
    if (bytes.size() >= leastDeferred && field != nullptr) {
        if (auto* const scope = EncodingScope::current();
            scope != nullptr && scope->isLasting(*field)) {
            scope->put(element, bytes);
            return;
        }
    }
    Base64::encode(bytes.data(), bytes.size(),
                   element.makeString(Base64::encodedSize(bytes.size()), true));
}

} // namespace Tolv::MetaData::Detail
