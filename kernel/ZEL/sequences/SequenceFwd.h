#pragma once

/// Names the sequence handles and their bodies for headers that only pass them on.
namespace ZEL {

template <class T> class ImmutableSequence;
template <class T> class Sequence;

namespace Generic {
class IteratorIntf;
class Ref;
class SequenceHandle;
class SequenceIntf;
} // namespace Generic

} // namespace ZEL
