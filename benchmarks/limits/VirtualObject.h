#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace ZEL::bench {

/// The shortest access to values that an object keeps elsewhere: one virtual call of the object, and one pointer from
/// there to its values. No deviants, no transactions, no counts.
class VirtualObject {
public:
    virtual ~VirtualObject() = default;

    [[nodiscard]] virtual bool const & flag() const = 0;
    [[nodiscard]] virtual int const & number() const = 0;
    [[nodiscard]] virtual VirtualObject * const & type() const = 0;
    [[nodiscard]] virtual std::string nameByValue() const = 0;
    /// The setters compare and assign.
    virtual void setFlag(bool value) = 0;
    virtual void setName(std::string const & value) = 0;
};

/// Objects with short names, each the type of the next.
[[nodiscard]] std::vector<std::unique_ptr<VirtualObject>> makeVirtualObjects(std::size_t count);

} // namespace ZEL::bench
