#pragma once

#include <ZEL/Export.h>
#include <ZEL/serializer/Transformer.h>

#include <cstdint>
#include <deque>
#include <map>
#include <string>

namespace ZEL::Serializer {

/// Reading of plain XMI 2.1, in force for every input format.
///
/// Strips the XMI envelope and the head that the writer puts in `xmi:Extension`, leaves out the blocks of other tools,
/// restores the id counter of the model, and turns `href` and `xmi:idref` into links. A document of another XMI version
/// is skipped whole. Serves one run.
class ZEL_API StandardReadTransforms : public Transformer {
public:
    StandardReadTransforms();
    StandardReadTransforms(StandardReadTransforms const &) = delete;
    StandardReadTransforms & operator=(StandardReadTransforms const &) = delete;

    /// Sets the id counter of a new model to the value that its file has stated so far, so that no number in the file
    /// is taken by an object that has none there. Does nothing if the file has stated none, or one below the counter.
    void begin(Model const & model);

    /// Profiles are read as other packages are, instead of being skipped.
    void readProfiles();

private:
    ContextSequence beginFile(Context const & context);
    ContextSequence holdBack(Context const & context);
    ContextSequence checkVersion(Context const & context);
    ContextSequence checkExtender(Context const & context);
    ContextSequence takeNextId(Context const & context);
    Context releaseSkipped(std::string const & value);

    void tieNextId(ClassObject const & object);
    void raiseNextId(Model const & model) const;
    void endFile(Model const & model);

    std::int32_t fNextIdValue = 0;
    std::string fUuid;                               ///< in the last value; empty once a model has it
    std::deque<std::int32_t> fNextIds;               ///< read and not yet tied to a model
    std::map<std::string, std::int32_t> fIdsByModel; ///< by the URI of the model
    Context fDeferred; ///< the last envelope element, held back until its attribute is seen
};

} // namespace ZEL::Serializer
