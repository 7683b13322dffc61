#pragma once

#include <gdk/gdk.h>

#include <string>

namespace lumisk::desktop {

/// Whether there is a graphics card to draw with, by the files of `devices`; not where the person
/// has told the graphics library to do without one.
///
/// Without one both GTK and WebKit would still go by way of OpenGL, in software: shaders compiled
/// by the processor, a whole window drawn for each change, and twice, by the page's process and by
/// ours. Measured with two processors, that takes three times as long for a page and four times as
/// long for the first one as drawing without OpenGL.
bool hasGraphicsCard(const std::string& devices = "/dev");

/// Has windows that are made from now on drawn without OpenGL, unless the person has chosen how.
void drawInSoftware(GdkDisplay* display);

}  // namespace lumisk::desktop
