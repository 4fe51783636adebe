#pragma once

#include <ZEL/Export.h>
#include <ZEL/serializer/Context.h>

#include <cstddef>
#include <vector>

namespace ZEL::Serializer {

/// Contexts in order: those of one object or one XML element, or what a rule returns for one Context.
class ZEL_API ContextSequence {
public:
    using iterator = std::vector<Context>::iterator;
    using const_iterator = std::vector<Context>::const_iterator;

    ContextSequence() noexcept = default;
    explicit(false) ContextSequence(Context context) { addContext(std::move(context)); }

    /// Appends; an element counts in `elementCount`.
    void addContext(Context context) {
        fElementCount += context.isElement() ? 1U : 0U;
        fContexts.push_back(std::move(context));
    }
    /// Removes every Context equal to the given one. `elementCount` goes down by the number of Contexts removed,
    /// elements or not.
    void removeContext(Context const & context);
    /// Appends the other's Contexts and adds its `elementCount`.
    void append(ContextSequence const & other);
    void append(ContextSequence && other);

    void reserve(std::size_t count) { fContexts.reserve(count); }
    /// Empties the sequence and keeps its storage.
    void clear() noexcept;

    [[nodiscard]] std::size_t size() const noexcept { return fContexts.size(); }
    [[nodiscard]] bool empty() const noexcept { return fContexts.empty(); }
    /// How many elements were added.
    [[nodiscard]] unsigned int elementCount() const noexcept { return fElementCount; }

    [[nodiscard]] Context & front() noexcept { return fContexts.front(); }
    [[nodiscard]] Context const & front() const noexcept { return fContexts.front(); }
    [[nodiscard]] Context & back() noexcept { return fContexts.back(); }
    [[nodiscard]] Context const & back() const noexcept { return fContexts.back(); }
    [[nodiscard]] iterator begin() noexcept { return fContexts.begin(); }
    [[nodiscard]] const_iterator begin() const noexcept { return fContexts.begin(); }
    [[nodiscard]] iterator end() noexcept { return fContexts.end(); }
    [[nodiscard]] const_iterator end() const noexcept { return fContexts.end(); }

private:
    friend class Transformer;
    void recountElements() noexcept;

    unsigned int fElementCount = 0;
    std::vector<Context> fContexts;
};

} // namespace ZEL::Serializer
