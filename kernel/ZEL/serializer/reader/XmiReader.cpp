#include <ZEL/base/SharedOfHandedOver.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/serializer/Transformer.h>
#include <ZEL/serializer/reader/Merger.h>
#include <ZEL/serializer/reader/XmiReader.h>
#include <ZEL/serializer/reader/XmiReaderImpl.h>

#include <cassert>
#include <memory>
#include <utility>

namespace ZEL::Serializer {

/// What the copies of a reader share.
struct XmiReader::Shared {
    explicit Shared(XmiReaderSettings const & settings) : impl(settings) {}

    int readers = 0;
    XmiReaderImpl impl;
};

struct XmiReader::Counting {
    static void retain(Shared * shared) noexcept { ++shared->readers; }
    static void release(Shared * shared) noexcept {
        if (--shared->readers == 0) {
            delete shared;
        }
    }
};

XmiReader::XmiReader(XmiReaderSettings const & settings) : fShared(new Shared(settings)) {}

XmiReader::XmiReader(XmiReader const & other) = default;

XmiReader::XmiReader(XmiReader && other) noexcept = default;

XmiReader & XmiReader::operator=(XmiReader const & other) = default;

XmiReader & XmiReader::operator=(XmiReader && other) noexcept = default;

XmiReader::~XmiReader() = default;

XmiReaderImpl & XmiReader::impl() const noexcept { return fShared->impl; }

Object XmiReader::read(std::string const & file) { return impl().read(file); }

void XmiReader::addTransformer(Transformer * transformer) { impl().transformers().addTransformer(transformer); }

void XmiReader::addTransformer(internal::HandedOver<Transformer> transformer) {
    impl().transformers().addTransformer(internal::shared(std::move(transformer)));
}

void XmiReader::removeTransformer(Transformer const * transformer) {
    impl().transformers().removeTransformer(transformer);
}

void XmiReader::setMerger(Merger * merger) { setMerger(std::shared_ptr<Merger>(merger)); }

void XmiReader::setMerger(internal::HandedOver<Merger> merger) {
    impl().setMerger(merger.object() != nullptr ? internal::shared(std::move(merger)) : std::make_shared<Merger>());
}

int XmiReader::referredModelCount() const { return static_cast<int>(impl().referredModels().size()); }

Object XmiReader::getReferredModel(int index) const {
    assert(index >= 0 && index < referredModelCount());
    return impl().referredModels()[static_cast<std::size_t>(index)];
}

ReadReport const & XmiReader::report() const { return impl().report(); }

} // namespace ZEL::Serializer
