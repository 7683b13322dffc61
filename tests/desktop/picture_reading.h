#pragma once

#include <gtk/gtk.h>

#include <cstddef>
#include <vector>

#include "desktop/gref.h"

namespace lumisk::test {

/// The lower half of a picture, where a page stands and no bar does.
inline desktop::GRef<GdkTexture> lowerHalf(GdkTexture* picture) {
  const int width = gdk_texture_get_width(picture);
  const int height = gdk_texture_get_height(picture) / 2;
  const auto stride = static_cast<std::size_t>(width) * 4;
  std::vector<guchar> pixels(stride * 2 * static_cast<std::size_t>(height + 1));
  gdk_texture_download(picture, pixels.data(), stride);
  GBytes* const bytes = g_bytes_new(pixels.data() + stride * static_cast<std::size_t>(height),
                                    stride * static_cast<std::size_t>(height));
  auto half = desktop::GRef<GdkTexture>::adopt(
      gdk_memory_texture_new(width, height, GDK_MEMORY_DEFAULT, bytes, stride));
  g_bytes_unref(bytes);
  return half;
}

/// How light the picture is all in all, from 0 to 255.
inline double meanLightness(GdkTexture* picture) {
  const auto width = static_cast<std::size_t>(gdk_texture_get_width(picture));
  const auto height = static_cast<std::size_t>(gdk_texture_get_height(picture));
  std::vector<guchar> bytes(width * height * 4);
  gdk_texture_download(picture, bytes.data(), width * 4);
  double sum = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i)
    if (i % 4 != 3) sum += bytes[i];
  return sum / static_cast<double>(width * height * 3);
}

}  // namespace lumisk::test
