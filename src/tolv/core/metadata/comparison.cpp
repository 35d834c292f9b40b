#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>
#include <variant>

#include <tolv/core/metadata/detail/tree.h>

namespace Tolv::MetaData {

using Detail::Access;

namespace {

bool equalNumbers(Element const& left, Element const& right) noexcept {
    if (left.isFloating() && right.isFloating()) {
        auto const l = left.floatingNumber();
        auto const r = right.floatingNumber();
        return l == r || (l != l && r != r);
    }
    if (left.isFloating() || right.isFloating()) {
        auto const value = left.isFloating() ? left.floatingNumber() : right.floatingNumber();
        auto const& integer = left.isFloating() ? right : left;
        if (integer.isSigned() && integer.signedNumber() < 0)
            return value >= -0x1p63 && value < 0 &&
                   static_cast<std::int64_t>(value) == integer.signedNumber() &&
                   static_cast<double>(integer.signedNumber()) == value;
        return value >= 0 && value < 0x1p64 &&
               static_cast<std::uint64_t>(value) == integer.unsignedNumber() &&
               static_cast<double>(integer.unsignedNumber()) == value;
    }
    if (left.kind() == right.kind())
        return left.unsignedNumber() == right.unsignedNumber();
    auto const& signedOne = left.isSigned() ? left : right;
    return signedOne.signedNumber() >= 0 && left.unsignedNumber() == right.unsignedNumber();
}

bool isNumber(Element const& element) noexcept {
    return element.isSigned() || element.isUnsigned() || element.isFloating();
}

using Pair = std::pair<Element const*, Element const*>;

/// The position of the walk in two arrays of the same size.
struct Arrays {
    Array::ConstIterator left, right;

    /// The next children; null past the end.
    Pair next() noexcept {
        if (left == Array::ConstIterator())
            return {};
        return {&*left++, &*right++};
    }
};

/// The position of the walk in two objects of the same size.
struct Objects {
    Object::ConstIterator left, right;
    Object const* others;

    /// The next child on the left and the child of the same key on the right, which is null if the
    /// key is absent. Both are null past the end.
    Pair next() noexcept {
        if (left == Object::ConstIterator())
            return {};
        auto const& member = *left++;
        // Usually the keys are in the same order.
        auto const* const other = right != Object::ConstIterator() ? &*right++ : nullptr;
        if (other != nullptr && Access::equalTexts(member.key_, other->key_))
            return {&member.value, &other->value};
        return {&member.value, others->find(member.key())};
    }
};

using Level = std::variant<Arrays, Objects>;

/// The stack of containers that the walk is in. The first levels need no allocation.
class Levels {
public:
    Levels() noexcept {} // NOLINT(modernize-use-equals-default): leaves the buffer uninitialized
    Levels(Levels const&) = delete;
    Levels& operator=(Levels const&) = delete;

    [[nodiscard]] bool empty() const noexcept { return size_ == 0; }
    Level& top() noexcept { return items_[size_ - 1]; }
    void pop() noexcept { --size_; }

    /// @return false if memory runs out
    [[nodiscard]] bool push(Level const& level) noexcept {
        if (size_ == capacity_) {
            std::unique_ptr<Level[]> grown(new (std::nothrow) Level[capacity_ * 2]);
            if (grown == nullptr)
                return false;
            std::copy_n(items_, size_, grown.get());
            items_ = grown.get();
            capacity_ *= 2;
            grown_ = std::move(grown);
        }
        new (items_ + size_++) Level(level);
        return true;
    }

private:
    static constexpr std::size_t inside = 64;

    alignas(Level) std::byte room_[inside * sizeof(Level)];
    Level* items_ = reinterpret_cast<Level*>(room_);
    std::size_t size_ = 0;
    std::size_t capacity_ = inside;
    std::unique_ptr<Level[]> grown_;
};

template <class Container>
bool areShared(Container const& left, Container const& right) noexcept {
    return Access::rep(left) == Access::rep(right);
}

enum class Verdict { different, equal, dependsOnChildren };

template <class Container>
Verdict compare(Container const& left, Container const& right) noexcept {
    if (left.size() != right.size())
        return Verdict::different;
    return left.empty() || areShared(left, right) ? Verdict::equal : Verdict::dependsOnChildren;
}

/// Compares two elements without their children.
Verdict compare(Element const& left, Element const& right) noexcept {
    auto const verdict = [](bool equal) { return equal ? Verdict::equal : Verdict::different; };
    if (isNumber(left) && isNumber(right))
        return verdict(equalNumbers(left, right));
    if (left.kind() != right.kind())
        return Verdict::different;
    switch (left.kind()) {
    case Kind::boolean:
        return verdict(left.boolean() == right.boolean());
    case Kind::string:
        return verdict(Access::equalTexts(left, right));
    case Kind::array:
        return compare(left.array(), right.array());
    case Kind::object:
        return compare(left.object(), right.object());
    default:
        return Verdict::equal;
    }
}

Level levelOf(Array const& left, Array const& right) noexcept {
    return Arrays{left.begin(), right.begin()};
}

Level levelOf(Object const& left, Object const& right) noexcept {
    return Objects{left.begin(), right.begin(), &right};
}

Level levelOf(Element const& left, Element const& right) noexcept {
    return left.isArray() ? levelOf(left.array(), right.array())
                          : levelOf(left.object(), right.object());
}

/// Not recursive, since a tree may be a million levels deep.
bool equalChildren(Level const& root) noexcept {
    Levels levels;
    if (!levels.push(root))
        return false;
    while (!levels.empty()) {
        auto const [left, right] =
            std::visit([](auto& level) { return level.next(); }, levels.top());
        if (left == nullptr) {
            levels.pop();
            continue;
        }
        auto const verdict = right != nullptr ? compare(*left, *right) : Verdict::different;
        if (verdict == Verdict::different ||
            (verdict == Verdict::dependsOnChildren && !levels.push(levelOf(*left, *right))))
            return false;
    }
    return true;
}

template <class Value>
bool equal(Value const& left, Value const& right) noexcept {
    auto const verdict = compare(left, right);
    return verdict == Verdict::equal ||
           (verdict == Verdict::dependsOnChildren && equalChildren(levelOf(left, right)));
}

} // namespace

bool operator==(Array const& left, Array const& right) noexcept { return equal(left, right); }

bool operator==(Object const& left, Object const& right) noexcept { return equal(left, right); }

bool operator==(Element const& left, Element const& right) noexcept { return equal(left, right); }

} // namespace Tolv::MetaData
