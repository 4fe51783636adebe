#pragma once

#include <ZEL/Export.h>
#include <ZEL/base/HandedOver.h>
#include <ZEL/base/SmartPtr.h>
#include <ZEL/serializer/reader/ReadReport.h>
#include <ZEL/serializer/reader/XmiReaderSettings.h>
#include <ZEL/values/Object.h>

#include <string>

namespace ZEL::Serializer {

class Merger;
class Transformer;
class XmiReaderImpl;

/// Builds a model from an XMI 2.1 file, in one pass over it; files that its links lead to are read on the way.
///
/// Every read is one transaction on each model that takes part; when it fails, all of them are as they were before. A
/// reader can be used again and again: Transformers that were added serve one read, the Merger stays, but lets go of
/// its models after each read. A handle: copies share one reader. One read at a time, on the caller's thread.
class ZEL_API XmiReader {
public:
    explicit XmiReader(XmiReaderSettings const & settings = XmiReaderSettings());
    XmiReader(XmiReader const & other);
    XmiReader(XmiReader && other) noexcept;
    XmiReader & operator=(XmiReader const & other);
    XmiReader & operator=(XmiReader && other) noexcept;
    ~XmiReader();

    /// The model that the file holds. Invalid if the name makes no valid URI, and if the file holds no model: the
    /// models of the Merger are then as they were before. Throws a text with file, line and column if the file cannot
    /// be read or is not well-formed; of a file that a link leads to nothing is quoted. Passes on what rules, hooks and
    /// the Merger throw.
    Object read(std::string const & file);

    /// Ahead of the Transformers of the dialect, for the next read. Takes ownership; a shared one is passed by
    /// `std::shared_ptr`.
    void addTransformer(Transformer * transformer);
    void addTransformer(internal::HandedOver<Transformer> transformer);
    void removeTransformer(Transformer const * transformer);

    /// Takes ownership; null stands for a new default one.
    void setMerger(Merger * merger);
    void setMerger(internal::HandedOver<Merger> merger);

    /// The models that the last read found through links into other files, in order; valid until the next read.
    [[nodiscard]] int referredModelCount() const;
    /// `index` must be below the count.
    [[nodiscard]] Object getReferredModel(int index) const;
    /// What the last read could not bring into a model.
    [[nodiscard]] ReadReport const & report() const;

private:
    struct Shared;
    struct Counting;

    [[nodiscard]] XmiReaderImpl & impl() const noexcept;

    Generic::SmartPtr<Shared, Counting> fShared;
};

} // namespace ZEL::Serializer
