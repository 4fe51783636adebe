#pragma once

#include <ZEL/Export.h>
#include <ZEL/base/SoleOwner.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace HASP {
class XmlReader;
} // namespace HASP

namespace ZEL::Serializer {

/// Walks through elements that are kept as texts, `Remainder::Element::xml`, one after another: for rules that know what
/// is in them. Linear in their size. Of a text that is no element the events end there.
class ZEL_API RemainderReader {
public:
    enum class Event { Start, End, Text, Nothing };

    /// The texts must outlive it.
    explicit RemainderReader(std::vector<std::string_view> elements);
    ~RemainderReader();
    RemainderReader(RemainderReader const &) = delete;
    RemainderReader & operator=(RemainderReader const &) = delete;

    /// Goes on to the next event; `Nothing` after the last one.
    Event next();
    /// Of the element that starts or ends, without its prefix.
    [[nodiscard]] std::string const & name() const;
    /// The value of an attribute of the element that starts; empty if there is none. Valid until the next event.
    [[nodiscard]] std::string_view attribute(std::string_view name, std::string_view uri = {}) const;
    /// Valid until the next event.
    [[nodiscard]] std::string_view text() const;

private:
    internal::SoleOwner<HASP::XmlReader> fXml;
    std::size_t fDepth = 0; ///< with the element put around all
};

} // namespace ZEL::Serializer
