#pragma once

#include <hasp_util/Export.h>

#include <memory>
#include <string_view>

namespace HASP {

/// A name that an `XmlWriter` has looked at once, to be written many times: with its prefix, in the encoding of the
/// document. A cheap value. Only the writer that made it can write it.
class HOST_API XmlName {
public:
    /// Of nothing; it can be assigned to, but not written.
    XmlName() noexcept = default;

private:
    friend class XmlWriter;
    struct Looked;

    explicit XmlName(std::shared_ptr<Looked const> looked) noexcept;

    std::shared_ptr<Looked const> fLooked;
};

} // namespace HASP
