#pragma once

#include <ZEL/base/CooperativeVisitor.h>

namespace ZEL::Generic {

/// The tag space of sequences and their iterators.
class ZEL_API SequenceDomain : public CooperativeVisitor::VisitationDomain {};

} // namespace ZEL::Generic
