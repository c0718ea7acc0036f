// Positions as the bookmarks window and its edit dialog show them.
#pragma once

#include <stdint.h>

#include "bookmarks/bookmark_store.h"

namespace kelvo {

// The list's form of a position: "1:30", "62:05".
void FormatListPosition(int32_t position_s, wchar_t (&text)[kPositionTextCapacity]) noexcept;

// The edit dialog's form, in two fields: "001" and "30".
void FormatEditPosition(int32_t position_s, wchar_t (&minutes)[kPositionTextCapacity],
                        wchar_t (&seconds)[kPositionTextCapacity]) noexcept;

// The position of the edit dialog's two fields. A field without digits counts as 0, any number of
// seconds is accepted; a position beyond 32 bits becomes the largest.
int32_t ParseEditPosition(const wchar_t* minutes, const wchar_t* seconds) noexcept;

}  // namespace kelvo
