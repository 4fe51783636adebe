#include <ZEL/base/Callback.h>

#include <boost/function/function_base.hpp>
#include <boost/throw_exception.hpp>

#include <cstring>

namespace ZEL::internal {

CallbackRoom::CallbackRoom(CallbackRoom const & other) {
    if (other.fHeap == nullptr) {
        std::memcpy(fBytes, other.fBytes, kBytes);
    } else {
        keep(other.fHeap->copy(other.function()), *other.fHeap);
    }
}

CallbackRoom::CallbackRoom(CallbackRoom && other) noexcept : fHeap(std::exchange(other.fHeap, nullptr)) {
    std::memcpy(fBytes, other.fBytes, kBytes);
}

void CallbackRoom::swap(CallbackRoom & other) noexcept {
    std::swap(fHeap, other.fHeap);
    std::swap(fBytes, other.fBytes);
}

void CallbackRoom::raiseEmpty() { boost::throw_exception(boost::bad_function_call()); }

} // namespace ZEL::internal
