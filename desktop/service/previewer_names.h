#pragma once

// The names under which file managers look for a previewer.

namespace lumisk::desktop {

inline constexpr const char* kApplicationId = "org.lumisk.Previewer";

/// The name and object that Files and the programs around it call.
inline constexpr const char* kFilesPreviewerName = "org.gnome.NautilusPreviewer";
inline constexpr const char* kFilesPreviewerPath = "/org/gnome/NautilusPreviewer";
/// Its present interface, with a window handle as text.
inline constexpr const char* kFilesInterface = "org.gnome.NautilusPreviewer2";
/// Its older one, with an X11 window's number.
inline constexpr const char* kFilesOlderInterface = "org.gnome.NautilusPreviewer";

/// Nemo's name and interface.
inline constexpr const char* kNemoPreviewerName = "org.nemo.Preview";
inline constexpr const char* kNemoPreviewerPath = "/org/nemo/Preview";
inline constexpr const char* kNemoInterface = "org.nemo.Preview";

}  // namespace lumisk::desktop
