#include "Spreadsheet/XMLEvents.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <expat.h>
#include <new>
#include <utility>

namespace quorvel {

namespace {

/// What one parser holds beside the text that it hands out. Names are kept for a whole document, and a tag is held
/// whole, so a crafted document could ask for many times its own size.
constexpr std::size_t mostMemory = std::size_t{64} << 20;

// The parser's memory functions know nothing of the parser they serve. Parsers don't move between threads and seldom
// live side by side in one, so the thread keeps the account.
thread_local std::size_t memoryInUse = 0;

struct alignas(std::max_align_t) BlockHeader {
    std::size_t size = 0;
};

void* allocate(std::size_t size) {
    if (size > mostMemory || memoryInUse > mostMemory - size) return nullptr;
    auto* header = static_cast<BlockHeader*>(std::malloc(sizeof(BlockHeader) + size));
    if (!header) return nullptr;
    header->size = size;
    memoryInUse += size;
    return header + 1;
}

void release(void* block) {
    if (!block) return;
    BlockHeader* header = static_cast<BlockHeader*>(block) - 1;
    memoryInUse -= header->size;
    std::free(header);
}

void* reallocate(void* block, std::size_t size) {
    if (!block) return allocate(size);
    BlockHeader* header = static_cast<BlockHeader*>(block) - 1;
    const std::size_t before = header->size;
    if (size > mostMemory || memoryInUse - before > mostMemory - size) return nullptr;
    auto* moved = static_cast<BlockHeader*>(std::realloc(header, sizeof(BlockHeader) + size));
    if (!moved) return nullptr;
    moved->size = size;
    memoryInUse += size - before;
    return moved + 1;
}

constexpr XML_Memory_Handling_Suite boundedMemory{allocate, reallocate, release};

std::string_view localName(std::string_view name) {
    return name.substr(name.find(':') + 1);  // npos + 1 is 0
}

/// Whether a document that begins like this has ASCII characters as single bytes: all but UTF-16 do. Says no when in
/// doubt.
bool hasASCIIBytes(std::string_view beginning) {
    if (beginning.starts_with("\xEF\xBB\xBF")) beginning.remove_prefix(3);
    const auto isASCII = [](unsigned char c) { return c > 0 && c < 0x80; };
    return beginning.size() >= 2 && isASCII(beginning[0]) && isASCII(beginning[1]);
}

/// Appends without doubling what is large: a text may be most of a document.
void append(std::string& text, const char* characters, std::size_t count) {
    constexpr std::size_t large = std::size_t{32} << 20;
    if (text.size() >= large && text.capacity() - text.size() < count) text.reserve(text.size() + large + count);
    text.append(characters, count);
}

}  // namespace

struct XMLEvents::State {
    OnStart onStart;
    OnEnd onEnd;
    XML_Parser parser = nullptr;
    std::string text;
    int depth = 0;
    XML_Index taken = 0;    // bytes that the parser got
    XML_Index tagEnd = -1;  // where the last tag ended among them
    bool asciiBytes = false;
    std::string failure;
    bool failed = false;

    ~State() { XML_ParserFree(parser); }

    void stop(std::string words) {
        if (!failed) failure = std::move(words);
        failed = true;
        if (parser) XML_StopParser(parser, XML_FALSE);
    }

    /// Notes the parser's own words unless it was stopped for a reason of ours.
    bool note(XML_Status status) {
        if (status == XML_STATUS_ERROR && !failed) {
            const char* words = XML_ErrorString(XML_GetErrorCode(parser));
            failure = words ? words : "bad XML";
            failed = true;
        }
        return !failed;
    }

    void noteTag() { tagEnd = XML_GetCurrentByteIndex(parser) + XML_GetCurrentByteCount(parser); }

    /// The parser is C, which no exception may cross.
    template <class Action>
    void guarded(Action action) {
        try {
            action();
        } catch (const std::bad_alloc&) {
            stop("out of memory");
        }
    }

    static State& of(void* data) { return *static_cast<State*>(data); }

    static void started(void* data, const char* name, const char** attributes) {
        State& state = of(data);
        // A parser that was stopped may still have an event or two to tell.
        if (state.failed) return;
        state.noteTag();
        if (++state.depth > deepestNesting) return state.stop("elements nested too deeply");
        state.text.clear();
        state.guarded([&] { state.onStart(localName(name), XMLAttributes(attributes)); });
    }

    static void ended(void* data, const char* name) {
        State& state = of(data);
        if (state.failed) return;
        state.noteTag();
        --state.depth;
        state.guarded([&] { state.onEnd(localName(name), state.text); });
        state.text.clear();
    }

    static void characters(void* data, const char* characters, int count) {
        State& state = of(data);
        state.guarded([&] { append(state.text, characters, static_cast<std::size_t>(count)); });
    }

    static void documentType(void* data, const char*, const char*, const char*, int) {
        of(data).stop("a document type declaration");
    }
};

std::optional<std::string_view> XMLAttributes::find(std::string_view name) const {
    for (const char* const* item = list_; *item; item += 2)
        if (name == item[0]) return item[1];
    return std::nullopt;
}

XMLEvents::XMLEvents(OnStart onStart, OnEnd onEnd) : state_(std::make_unique<State>()) {
    state_->onStart = std::move(onStart);
    state_->onEnd = std::move(onEnd);
    state_->parser = XML_ParserCreate_MM(nullptr, &boundedMemory, nullptr);
    if (!state_->parser) {
        state_->stop("out of memory");
        return;
    }
    XML_SetUserData(state_->parser, state_.get());
    XML_SetElementHandler(state_->parser, State::started, State::ended);
    XML_SetCharacterDataHandler(state_->parser, State::characters);
    XML_SetStartDoctypeDeclHandler(state_->parser, State::documentType);
}

XMLEvents::~XMLEvents() = default;

bool XMLEvents::push(std::string_view bytes) {
    State& state = *state_;
    if (state.taken == 0) state.asciiBytes = hasASCIIBytes(bytes);
    while (!bytes.empty() && !state.failed) {
        const std::string_view piece = bytes.substr(0, wantedSize());
        bytes.remove_prefix(piece.size());
        state.taken += static_cast<XML_Index>(piece.size());
        state.note(XML_Parse(state.parser, piece.data(), static_cast<int>(piece.size()), XML_FALSE));
    }
    return !state.failed;
}

bool XMLEvents::isReadable() const {
    return !state_->failed;
}

std::size_t XMLEvents::wantedSize() const {
    constexpr XML_Index piece = 65536;
    const State& state = *state_;
    const XML_Index seen = state.failed ? state.taken : XML_GetCurrentByteIndex(state.parser);
    return static_cast<std::size_t>(std::clamp<XML_Index>(state.taken - seen, piece, mostMemory));
}

bool XMLEvents::isBetweenTags() const {
    const State& state = *state_;
    // Two more levels is as deep as a cell goes.
    return !state.failed && state.asciiBytes && state.tagEnd == state.taken && state.depth > 0 &&
           state.depth < deepestNesting - 1;
}

std::expected<void, std::string> XMLEvents::finish() {
    State& state = *state_;
    if (!state.failed) state.note(XML_Parse(state.parser, "", 0, XML_TRUE));
    if (state.failed) return std::unexpected(state.failure);
    return {};
}

std::expected<void, std::string> XMLEvents::parse(std::string_view document, OnStart onStart, OnEnd onEnd) {
    XMLEvents events(std::move(onStart), std::move(onEnd));
    events.push(document);
    return events.finish();
}

}  // namespace quorvel
