#include <ZEL/serializer/ContextSequence.h>

#include <algorithm>
#include <iterator>

namespace ZEL::Serializer {

void ContextSequence::removeContext(Context const & context) {
    // The argument may be one of the Contexts that go.
    Context const pattern = context;
    std::size_t const removed = std::erase_if(fContexts, [&](Context const & entry) { return entry == pattern; });
    fElementCount -= static_cast<unsigned int>(removed);
}

void ContextSequence::append(ContextSequence const & other) { append(ContextSequence(other)); }

void ContextSequence::append(ContextSequence && other) {
    // Room for just both would be made anew at each of many calls.
    fContexts.insert(fContexts.end(), std::make_move_iterator(other.fContexts.begin()),
                     std::make_move_iterator(other.fContexts.end()));
    fElementCount += other.fElementCount;
    other.clear();
}

void ContextSequence::clear() noexcept {
    fContexts.clear();
    fElementCount = 0;
}

void ContextSequence::recountElements() noexcept {
    fElementCount = static_cast<unsigned int>(
        std::count_if(fContexts.begin(), fContexts.end(), [](Context const & context) { return context.isElement(); }));
}

} // namespace ZEL::Serializer
