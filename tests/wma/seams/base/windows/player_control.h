#pragma once

namespace kelvo {
inline constexpr char kPlayerAnchorExport[] = "anchor";
}
