#include <regex>
#include <type_traits>
#include <typeindex>
#include <typeinfo>
#include <unordered_map>

#include <tolv/core/exceptions.h>
#include <tolv/msgs/attrs/batches.h>
#include <tolv/msgs/attrs/messages.h>
#include <tolv/msgs/engine/messages.h>

#include "attribute_description.h"
#include "attribute_view.h"
#include "tree_path.h"

namespace Tolv::Tool {

using MetaData::Element;
using Msgs::Message;

namespace {

/// The messages listed by a payload, and the key of the list.
struct Inside {
    char const* key = "";
    std::vector<Message const*> messages;
};

template <class List>
Inside listOf(char const* key, List const& list) {
    Inside inside{key, {}};
    for (auto const& one : list) {
        if constexpr (requires { one.get(); })
            inside.messages.push_back(one.get());
        else
            inside.messages.push_back(&one);
    }
    return inside;
}

/// The operations on a message of class `M`.
template <class M>
struct Functions {
    using Payload = std::remove_cvref_t<decltype(std::declval<M const&>().payload())>;
    static constexpr bool canValidate = requires(Payload const& p) { p.explainInvalid(); };

    /// Null if the payload did not parse.
    static Payload const* payloadOf(Message const& message) {
        auto const& field = static_cast<M const&>(message).Data;
        return field.initialized() ? &field() : nullptr;
    }

    static std::optional<Verdict> verdict(Message const& message) {
        if constexpr (canValidate) {
            auto const* const payload = payloadOf(message);
            if (payload == nullptr)
                return Verdict{false, "the payload did not parse"};
            try {
                if (payload->validate())
                    return Verdict{true, {}};
                return Verdict{false, payload->explainInvalid()};
            } catch (std::regex_error const& e) {
                return Verdict{false, std::string("ValidCharacters: ") + e.what()};
            } catch (Exception::Base const& e) {
                return Verdict{false, e.what()};
            }
        }
        return {};
    }

    static std::optional<Reading> reading(Message const& message, Element const& data) {
        if constexpr (canValidate)
            if (auto const* const payload = payloadOf(message))
                return AttributeDescription(data).of(*payload);
        return {};
    }

    static Inside inside(Message const& message) {
        auto const* const payload = payloadOf(message);
        if (payload == nullptr)
            return {};
        if constexpr (requires { payload->messages(); }) {
            if (payload->messages.initialized())
                return listOf("Messages", payload->messages());
        } else if constexpr (requires { payload->param(); }) {
            if (payload->param.initialized())
                return listOf("param", payload->param());
        } else if constexpr (requires { payload->attributes.size(); }) {
            return listOf("Attributes", payload->attributes);
        }
        return {};
    }
};

struct View {
    std::optional<Verdict> (*verdict)(Message const&);
    std::optional<Reading> (*reading)(Message const&, Element const& data);
    Inside (*inside)(Message const&);
};

template <class M>
std::pair<std::type_index const, View> viewOf() {
    return {typeid(M), {&Functions<M>::verdict, &Functions<M>::reading, &Functions<M>::inside}};
}

/// Null for a class without a view. The lookup is by type, since an entry of a batch may carry any
/// id.
View const* viewOf(Message const& message) {
    using namespace Msgs;
    static std::unordered_map<std::type_index, View> const views{
#define TOLV_SIMPLE_MESSAGE(alias, number, role)
#define TOLV_DESTINATION_MESSAGE(alias, number, role)
#define TOLV_PAYLOAD_MESSAGE(alias, number, role, ...) viewOf<Attrs::alias>(),
#include <tolv/msgs/attrs/batches.def>
#include <tolv/msgs/attrs/messages.def>
#undef TOLV_PAYLOAD_MESSAGE
#undef TOLV_DESTINATION_MESSAGE
#undef TOLV_SIMPLE_MESSAGE
        viewOf<Engine::TransitionMessage>(),
    };
    auto const found = views.find(typeid(message));
    return found != views.end() ? &found->second : nullptr;
}

Inside insideOf(Message const& message) {
    auto const* const view = viewOf(message);
    return view != nullptr ? view->inside(message) : Inside();
}

void addVerdictsInside(Message const& message, TreePath const& path,
                       std::vector<InnerVerdict>& all) {
    auto const inside = insideOf(message);
    TreePath const data(path, "Data");
    TreePath const list(data, inside.key);
    for (std::size_t i = 0; i < inside.messages.size(); ++i) {
        TreePath const here(list, i);
        if (auto verdict = verdictOf(*inside.messages[i]))
            all.push_back({here.text(), std::move(*verdict)});
        addVerdictsInside(*inside.messages[i], here, all);
    }
}

} // namespace

std::optional<Verdict> verdictOf(Message const& message) {
    auto const* const view = viewOf(message);
    return view != nullptr ? view->verdict(message) : std::nullopt;
}

std::optional<Reading> readingOf(Message const& message, Element const& data) {
    auto const* const view = viewOf(message);
    return view != nullptr ? view->reading(message, data) : std::nullopt;
}

std::vector<Message const*> messagesInside(Message const& message) {
    return insideOf(message).messages;
}

std::vector<InnerVerdict> verdictsInside(Message const& message) {
    std::vector<InnerVerdict> all;
    addVerdictsInside(message, {}, all);
    return all;
}

} // namespace Tolv::Tool
