# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

# The one table of the layers. The build takes its folders from here, and tools/lint holds every
# #include against it. A new edge is a decision: it is made in the change that needs it, and its
# reason stands in the message of that change.

# Every subsystem of the design, lowest first. An edge only ever points to the left.
set(HV_LAYER_ORDER
  platform foundation bezier rotation fcurve raster shape pathbuild motionpath morph vectorize
  control)

# hv_layer(<subsystem> <subsystems...>): a subsystem that exists, and those that its files may
# include from beside their own.
function(hv_layer subsystem)
  set(HV_SUBSYSTEMS ${HV_SUBSYSTEMS} ${subsystem} PARENT_SCOPE)
endfunction()

hv_layer(platform)
hv_layer(foundation platform)
hv_layer(bezier platform foundation)
hv_layer(rotation platform foundation)
hv_layer(fcurve platform foundation bezier rotation)
hv_layer(raster platform foundation bezier rotation)
hv_layer(shape platform foundation bezier rotation fcurve raster)
hv_layer(pathbuild platform foundation bezier rotation fcurve raster shape)
hv_layer(motionpath platform foundation bezier rotation shape)
hv_layer(morph platform foundation bezier rotation shape pathbuild)
hv_layer(vectorize platform foundation bezier raster shape)
hv_layer(control platform foundation bezier fcurve)
