// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A morpher's life and its anchors.

#include <hv/morph/HvMorpher.h>

#include <hv/morph/HvMorpherImpl.h>

HvMorpherImpl::HvMorpherImpl(HvPath2fProp1d const* firstOutline,
                             HvPath2fProp1d const* secondOutline, HvGC const& context)
    : first(firstOutline), second(secondOutline), gc(&context), motionPaths(1)
{
}

HvMorpher::HvMorpher(HvPath2fProp1d const* first, HvPath2fProp1d const* second, HvGC const& gc)
    : impl_(new HvMorpherImpl(first, second, gc))
{
}

HvMorpher::~HvMorpher() = default;

int HvMorpher::SetMotionPath(unsigned int firstIndex, unsigned int secondIndex,
                             HvPath2f const* path)
{
    impl_->motionPaths.Add(MPathData{firstIndex, secondIndex, path});
    return 1;
}
