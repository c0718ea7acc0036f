// The desktop's tree view cuts its labels where their widths end, but some letters of the device's
// small font are drawn beyond: "Unknown" lost a part of its last letter.
#pragma once

#include <windows.h>

#include <commctrl.h>

namespace kelvo {

// What a tree asks while it draws itself; draws what is missing of a label. The answer.
LRESULT OnTreeDraws(const NMTVCUSTOMDRAW& draw) noexcept;

}  // namespace kelvo
