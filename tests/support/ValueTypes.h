#pragma once

#include "support/ExpectRaises.h"

#include <ZEL/Argument.h>
#include <ZEL/Boolean.h>
#include <ZEL/Double.h>
#include <ZEL/Integer.h>
#include <ZEL/Real.h>
#include <ZEL/Single.h>
#include <ZEL/String.h>
#include <ZEL/UnlimitedNatural.h>
#include <ZEL/metamodel/PackageMergeKind.h>
#include <ZEL/metamodel/ParameterDirectionKind.h>
#include <ZEL/metamodel/PersistenceKind.h>
#include <ZEL/metamodel/VisibilityKind.h>
#include <ZEL/values/TypeInfoRegistry.h>
