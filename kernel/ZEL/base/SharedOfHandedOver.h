#pragma once

#include <ZEL/base/HandedOver.h>

#include <memory>

namespace ZEL::internal {

/// A shared pointer to the object, with which what kept it goes.
template <class T> [[nodiscard]] std::shared_ptr<T> shared(HandedOver<T> handed) {
    std::shared_ptr<typename HandedOver<T>::Keeper> keeper(handed.release());
    return std::shared_ptr<T>(std::move(keeper), handed.object());
}

} // namespace ZEL::internal
