#pragma once

namespace ZEL::internal {

/// Who registers types when one is asked for first.
class LateTypes {
public:
    LateTypes() = default;
    LateTypes(LateTypes const &) = delete;
    LateTypes & operator=(LateTypes const &) = delete;

    virtual void registerTypes() const = 0;

protected:
    ~LateTypes() = default;
};

} // namespace ZEL::internal
