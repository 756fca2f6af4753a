// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The whole library in one include; `./dev format` keeps the list.

#ifndef HV_HV_H
#define HV_HV_H

#include <hv/platform/HvExport.h>

#include <hv/foundation/HvBoolArray.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvFloatArray.h>
#include <hv/foundation/HvLPVoidArray.h>
#include <hv/foundation/HvMemory.h>
#include <hv/foundation/HvPoint2.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/HvPoint3.h>
#include <hv/foundation/HvPoint3dArray.h>
#include <hv/foundation/HvPoint3fArray.h>
#include <hv/foundation/HvPointTag.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/foundation/HvTypedArray.h>
#include <hv/foundation/HvUByteArray.h>
#include <hv/foundation/HvULongArray.h>
#include <hv/foundation/HvUShortArray.h>
#include <hv/foundation/array_capacity.h>
#include <hv/foundation/saturate.h>

#endif
