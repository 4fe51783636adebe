#pragma once

#include <ZEL/Export.h>
#include <ZEL/base/SmartPtr.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace ZEL::internal {

/// The value of a multi-valued text property in an object's state, in one word: null when empty, else a counted block
/// that copies share until one of them is written.
///
/// Meant for the few texts that such properties have: searches are linear and a write to a shared block copies it. An
/// operation that throws leaves the sequence as it was. Whether equal texts may stand twice is for the caller to say.
class ZEL_API PersistentTextSequence {
public:
    [[nodiscard]] bool empty() const noexcept { return !fBlock; }
    [[nodiscard]] std::size_t size() const noexcept { return empty() ? 0 : fBlock->texts.size(); }
    /// `position` must be less than the size.
    [[nodiscard]] std::string const & at(std::size_t position) const noexcept { return fBlock->texts[position]; }
    /// The first position of `text`, or -1.
    [[nodiscard]] std::ptrdiff_t indexOf(std::string_view text) const noexcept;
    [[nodiscard]] bool contains(std::string_view text) const noexcept { return indexOf(text) >= 0; }

    /// `position` must not be greater than the size.
    void insert(std::size_t position, std::string text);
    void push_back(std::string text) { insert(size(), std::move(text)); }
    /// `position` must be less than the size.
    void eraseAt(std::size_t position);
    /// `position` must be less than the size.
    void replaceAt(std::size_t position, std::string text);
    void clear() noexcept { fBlock = nullptr; }

    [[nodiscard]] bool operator==(PersistentTextSequence const & other) const noexcept;

private:
    struct Block {
        std::uint32_t count = 0;
        std::vector<std::string> texts;
    };
    struct Counting {
        static void retain(Block * block) noexcept { ++block->count; }
        static void release(Block * block) noexcept {
            if (--block->count == 0) {
                delete block;
            }
        }
    };

    [[nodiscard]] std::vector<std::string> & ownTexts();

    Generic::SmartPtr<Block, Counting> fBlock;
};

// States are copied where nothing may fail.
static_assert(std::is_nothrow_copy_constructible_v<PersistentTextSequence> &&
              std::is_nothrow_copy_assignable_v<PersistentTextSequence>);

} // namespace ZEL::internal
