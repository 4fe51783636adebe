#pragma once

#include "support/SequenceItems.h"

#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/sequences/GenericAssociationSequence.h>
#include <ZEL/sequences/GenericCombinedSequence.h>
#include <ZEL/sequences/GenericFilteredSequence.h>
#include <ZEL/sequences/GenericNullSequence.h>
#include <ZEL/sequences/GenericPropertyToSequenceProxy.h>
#include <ZEL/sequences/GenericReferenceCountingSequenceProxy.h>
#include <ZEL/sequences/ListQImpl.h>
#include <ZEL/sequences/MultiIndexImpl.h>
#include <ZEL/sequences/RefTraits.h>
#include <ZEL/sequences/SequenceBuilder.h>
#include <ZEL/values/Object.h>

#include <gmock/gmock.h>

namespace ZEL::tests {

using Generic::GenericAssociationSequence;
using Generic::GenericDeviantSequence;
using Generic::GenericNullSequence;
using Generic::GenericPropertyToSequenceProxy;
using Generic::GenericReferenceCountingSequenceProxy;
using Generic::ListQImpl;
using Generic::MultiIndexImpl;
using Generic::PropertyToSequenceMethods;
using Generic::Ref;
using Generic::RefTraits;
using Generic::SequenceBuilder;
using Generic::SequenceField;
using Generic::SequenceHandle;
using Generic::SequenceIntf;
using Generic::SequencePtr;
using Generic::combined_sequence_internal::GenericCombinedSequence;
using Generic::filtered_sequence_internal::GenericFilter;
using Generic::filtered_sequence_internal::GenericFilteredSequence;
using Generic::filtered_sequence_internal::makeFilter;
using Generic::filtered_sequence_internal::showsOnly;
using Generic::filtered_sequence_internal::takesOnly;
using testing::ElementsAre;

} // namespace ZEL::tests
