#pragma once

#include "Drawing/Cairo.h"
#include "Drawing/EncodedPicture.h"
#include "Drawing/Image.h"

/// Pictures as sources for cairo. Never null; a pattern that couldn't be made is in error.
namespace quorvel::PicturePattern {

/// For bitmaps, which read the pixels while they are drawn.
CairoPattern forBitmap(const Image& image);

/// For documents, which read the pixels when the page ends: `image` is borrowed until then. Stored once by its id.
CairoPattern forDocument(const Image* image);

/// For documents: the file's own bytes are stored, once by their id.
CairoPattern forDocument(const EncodedPicture& picture);

}  // namespace quorvel::PicturePattern
