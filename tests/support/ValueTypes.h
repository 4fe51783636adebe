#pragma once

#include "support/ExpectRaises.h"

#include <ZEL/Argument.h>
#include <ZEL/Double.h>
#include <ZEL/Integer.h>
#include <ZEL/PackageMergeKind.h>
#include <ZEL/ParameterDirectionKind.h>
#include <ZEL/PersistenceKind.h>
#include <ZEL/Real.h>
#include <ZEL/Single.h>
#include <ZEL/String.h>
#include <ZEL/UnlimitedNatural.h>
#include <ZEL/VisibilityKind.h>
#include <ZEL/values/TypeInfoRegistry.h>
