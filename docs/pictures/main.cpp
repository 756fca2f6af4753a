// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Draws one picture of the pages: `hv_page_pictures NAME FILE`.

#include "Picture.h"

#include <cstring>

int main(int argc, char** argv)
{
    struct {
        char const* name;
        void (*draw)(std::FILE*);
    } const pictures[] = {{"bezier", DrawBezier},
                          {"curves", DrawCurves},
                          {"fills", DrawFills},
                          {"strokes", DrawStrokes}};
    for (auto const& picture : pictures) {
        if (argc == 3 && std::strcmp(argv[1], picture.name) == 0) {
            std::FILE* const file = std::fopen(argv[2], "w");
            if (file == nullptr) {
                std::fprintf(stderr, "hv_page_pictures: cannot write %s\n", argv[2]);
                return 1;
            }
            picture.draw(file);
            return std::fclose(file) == 0 ? 0 : 1;
        }
    }
    std::fprintf(stderr, "hv_page_pictures NAME FILE: there are bezier, curves, fills, strokes\n");
    return 2;
}
