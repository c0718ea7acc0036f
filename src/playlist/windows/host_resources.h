// What the save dialog takes from the host's module, and never from a language library: these
// numbers mean other things there.
#pragma once

namespace kelvo {

inline constexpr int kHostSaveDialog = 115;
inline constexpr int kHostSaveTree = 1000;
inline constexpr int kHostSaveName = 1001;
inline constexpr int kHostSaveButton = 1002;
inline constexpr int kHostSavePath = 1003;
inline constexpr int kHostSaveMenuBar = 117;

inline constexpr int kHostFolderIcon = 108;
inline constexpr int kHostOpenFolderIcon = 109;
inline constexpr int kHostSpareIcon = 100;
inline constexpr int kHostPlaylistIcon = 112;
inline constexpr int kHostStateIcons[] = {113, 106, 107};

inline constexpr unsigned kHostEmptyPathText = 6200;
inline constexpr unsigned kHostEmptyPathCaption = 6201;
inline constexpr unsigned kHostOverwriteText = 6202;
inline constexpr unsigned kHostOverwriteCaption = 6203;
inline constexpr unsigned kHostNotCreatedText = 6204;

}  // namespace kelvo
