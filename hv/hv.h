// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The whole library in one include; `dev format` keeps the list.

#ifndef HV_HV_H
#define HV_HV_H

#include <hv/platform/CActiveDataMultiThreadedRenderingLock.h>
#include <hv/platform/CXQCriticalSection.h>
#include <hv/platform/HvExport.h>
#include <hv/platform/critical_section.h>
#include <hv/platform/guid.h>
#include <hv/platform/performance_counter.h>
#include <hv/platform/thread_local_slots.h>

#include <hv/foundation/HvAltDynArray.h>
#include <hv/foundation/HvArchiveFault.h>
#include <hv/foundation/HvBoolArray.h>
#include <hv/foundation/HvDLList.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvDynArray.h>
#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvFloatArray.h>
#include <hv/foundation/HvLPVoidArray.h>
#include <hv/foundation/HvMatrix.h>
#include <hv/foundation/HvMemory.h>
#include <hv/foundation/HvNumericVector.h>
#include <hv/foundation/HvPoint2.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/HvPoint3.h>
#include <hv/foundation/HvPoint3dArray.h>
#include <hv/foundation/HvPoint3fArray.h>
#include <hv/foundation/HvPointTag.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/foundation/HvPrecisionTimer.h>
#include <hv/foundation/HvStlAllocator.h>
#include <hv/foundation/HvTimer.h>
#include <hv/foundation/HvTimerText.h>
#include <hv/foundation/HvTypedArray.h>
#include <hv/foundation/HvUByteArray.h>
#include <hv/foundation/HvULongArray.h>
#include <hv/foundation/HvUShortArray.h>
#include <hv/foundation/HvVectorDouble.h>
#include <hv/foundation/HvVectorLong.h>
#include <hv/foundation/angle.h>
#include <hv/foundation/archive_envelope.h>
#include <hv/foundation/array_capacity.h>
#include <hv/foundation/byte_codec.h>
#include <hv/foundation/dynamic_mem_size.h>
#include <hv/foundation/polyline.h>
#include <hv/foundation/polyline_compare.h>
#include <hv/foundation/polyline_eval.h>
#include <hv/foundation/polyline_interpolate.h>
#include <hv/foundation/polyline_length.h>
#include <hv/foundation/polyline_sample.h>
#include <hv/foundation/raw_elements.h>
#include <hv/foundation/saturate.h>

#include <hv/bezier/HvBezierSink.h>
#include <hv/bezier/HvBezierTool.h>
#include <hv/bezier/HvBezierTool_clip.h>
#include <hv/bezier/HvBezierTool_extent.h>
#include <hv/bezier/HvBezierTool_flatten.h>
#include <hv/bezier/HvBezierTool_locate.h>
#include <hv/bezier/HvBezierTool_split.h>
#include <hv/bezier/HvFlattenedRuns.h>
#include <hv/bezier/HvSpline.h>
#include <hv/bezier/HvSpline1d.h>
#include <hv/bezier/HvSpline2d.h>
#include <hv/bezier/HvSpline3d.h>
#include <hv/bezier/cubic_split.h>
#include <hv/bezier/line_clip.h>
#include <hv/bezier/quadratic.h>

#include <hv/rotation/HvQuat.h>
#include <hv/rotation/HvQuatCurve.h>
#include <hv/rotation/HvQuatCurveLock.h>
#include <hv/rotation/HvQuatKey.h>
#include <hv/rotation/HvQuatSpline.h>
#include <hv/rotation/HvTransfo4.h>

#include <hv/fcurve/CFCKeyConstraint.h>
#include <hv/fcurve/CFCSingleValueKey.h>
#include <hv/fcurve/CFCStdKey.h>
#include <hv/fcurve/CFCUserDataSet.h>
#include <hv/fcurve/HvBaseFCurve.h>
#include <hv/fcurve/HvBooleanFCurve.h>
#include <hv/fcurve/HvCurveLock.h>
#include <hv/fcurve/HvFCurveArchive.h>
#include <hv/fcurve/HvFCurveKeyMover.h>
#include <hv/fcurve/HvFCurveShell.h>
#include <hv/fcurve/HvFCurveStretcher.h>
#include <hv/fcurve/HvIntegerFCurve.h>
#include <hv/fcurve/HvQuatFCurve.h>
#include <hv/fcurve/HvRawFCurve.h>
#include <hv/fcurve/HvSingleValueFCurve.h>
#include <hv/fcurve/HvStdFCurve.h>
#include <hv/fcurve/HvStdTgtMover.h>
#include <hv/fcurve/HvSteppedFCurve.h>
#include <hv/fcurve/flatten_edges.h>

#include <hv/raster/HvBlurKernel.h>
#include <hv/raster/HvDoubleRaster.h>
#include <hv/raster/HvFillBox.h>
#include <hv/raster/HvFloatRaster.h>
#include <hv/raster/HvRasterGrid.h>
#include <hv/raster/HvUByteRaster.h>
#include <hv/raster/polygon_fill.h>
#include <hv/raster/scan_convert.h>

#include <hv/shape/HvGC.h>
#include <hv/shape/HvIsoView.h>
#include <hv/shape/HvOval2f.h>
#include <hv/shape/HvParallelogram2f.h>
#include <hv/shape/HvParallelogramShape2f.h>
#include <hv/shape/HvPath2f.h>
#include <hv/shape/HvPath2fIter.h>
#include <hv/shape/HvPath2fSink.h>
#include <hv/shape/HvRect2f.h>
#include <hv/shape/HvShape2f.h>
#include <hv/shape/HvShapeArchive.h>
#include <hv/shape/HvShapeLock.h>
#include <hv/shape/shape_boolean.h>

#include <hv/pathbuild/HvBasePathBuilder.h>
#include <hv/pathbuild/HvBasePathPropBuilder.h>
#include <hv/pathbuild/HvBezierFitPathBuilder.h>
#include <hv/pathbuild/HvBezierFitPathPropBuilder.h>
#include <hv/pathbuild/HvCubicPathBuilder.h>
#include <hv/pathbuild/HvLinearPathBuilder.h>
#include <hv/pathbuild/HvLinearPathPropBuilder.h>
#include <hv/pathbuild/HvMipPath2fProp1d.h>
#include <hv/pathbuild/HvPath2fProp1d.h>
#include <hv/pathbuild/HvPropCurveData.h>
#include <hv/pathbuild/HvShapeFactory.h>
#include <hv/pathbuild/stroke_fitting.h>
#include <hv/pathbuild/stroke_sampling.h>
#include <hv/pathbuild/stroke_tangents.h>

#include <hv/motionpath/HvMotionPath3d.h>
#include <hv/motionpath/HvTwoSidedTangent.h>

#include <hv/morph/HvMorpher.h>
#include <hv/morph/HvMorpherImpl.h>

#include <hv/vectorize/HvVectorizer.h>
#include <hv/vectorize/ObContext.h>
#include <hv/vectorize/ObContour.h>
#include <hv/vectorize/ObVectorize.h>
#include <hv/vectorize/VectClosure.h>

#include <hv/control/HvControlOperator.h>

#endif
