#pragma once

#include <cstddef>
#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quorvel {

/// The attributes of one start tag, valid during its event. Names are as written, prefix included.
class XMLAttributes {
public:
    struct Attribute {
        std::string_view name;
        std::string_view value;
    };

    /// Names and values in turn, closed by a null pointer.
    explicit XMLAttributes(const char* const* list) : list_(list) {}

    std::optional<std::string_view> find(std::string_view name) const;

    /// The first attribute, in the order of the document, whose name `matches`.
    template <class Matches>
    std::optional<Attribute> findIf(Matches matches) const {
        for (const char* const* item = list_; *item; item += 2)
            if (matches(std::string_view(item[0]))) return Attribute{item[0], item[1]};
        return std::nullopt;
    }

private:
    const char* const* list_;
};

/// XML as two plain callbacks, fed in pieces of any size. Element names come without their prefix. The text of an end
/// tag is what stood between it and the last tag before it; the callback may take it away.
///
/// Fetches nothing from outside. A document type declaration (and so every entity of its own), nesting deeper than 256
/// elements, and tags so large or so varied that the parser needs more than 64 MiB end as unreadable.
class XMLEvents {
public:
    using OnStart = std::function<void(std::string_view name, const XMLAttributes& attributes)>;
    using OnEnd = std::function<void(std::string_view name, std::string& text)>;

    static constexpr int deepestNesting = 256;

    XMLEvents(OnStart onStart, OnEnd onEnd);
    ~XMLEvents();
    XMLEvents(const XMLEvents&) = delete;
    XMLEvents& operator=(const XMLEvents&) = delete;

    /// Takes the next bytes of the document; the callbacks run in here. False once the document is unreadable.
    bool push(std::string_view bytes);

    /// Whether nothing was found wrong so far.
    bool isReadable() const;

    /// How many bytes the next piece should have. A tag that isn't complete yet is looked at anew with every piece, so
    /// the pieces should grow with it.
    std::size_t wantedSize() const;

    /// Whether the document is between two tags, inside its outermost element, and in an encoding whose ASCII bytes are
    /// ASCII. Then elements that are complete and well-formed in themselves may be kept from the parser, and it will
    /// not notice.
    bool isBetweenTags() const;

    /// The document ends here. Fails with the parser's words when it is unreadable, now or before.
    std::expected<void, std::string> finish();

    /// A whole document in one go.
    static std::expected<void, std::string> parse(std::string_view document, OnStart onStart, OnEnd onEnd);

private:
    struct State;

    std::unique_ptr<State> state_;
};

}  // namespace quorvel
