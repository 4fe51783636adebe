#include <ZEL/metamodel/Model.h>
#include <ZEL/serializer/Transformer.h>
#include <ZEL/serializer/reader/Merger.h>
#include <ZEL/serializer/reader/XmiReader.h>
#include <ZEL/serializer/reader/XmiReaderImpl.h>

#include <cassert>
#include <utility>

namespace ZEL::Serializer {

XmiReader::XmiReader(XmiReaderSettings const & settings) : fImpl(std::make_shared<XmiReaderImpl>(settings)) {}

Object XmiReader::read(std::string const & file) { return fImpl->read(file); }

void XmiReader::addTransformer(Transformer * transformer) { fImpl->transformers().addTransformer(transformer); }

void XmiReader::addTransformer(std::shared_ptr<Transformer> transformer) {
    fImpl->transformers().addTransformer(std::move(transformer));
}

void XmiReader::removeTransformer(Transformer const * transformer) {
    fImpl->transformers().removeTransformer(transformer);
}

void XmiReader::setMerger(Merger * merger) { setMerger(std::shared_ptr<Merger>(merger)); }

void XmiReader::setMerger(std::shared_ptr<Merger> merger) {
    fImpl->setMerger(merger != nullptr ? std::move(merger) : std::make_shared<Merger>());
}

int XmiReader::referredModelCount() const { return static_cast<int>(fImpl->referredModels().size()); }

Object XmiReader::getReferredModel(int index) const {
    assert(index >= 0 && index < referredModelCount());
    return fImpl->referredModels()[static_cast<std::size_t>(index)];
}

ReadReport const & XmiReader::report() const { return fImpl->report(); }

} // namespace ZEL::Serializer
