#pragma once

namespace kelvo {

// "Velmora Feature Pack", a carriage return, "version 2.51 installed.", in the user's language. The
// same buffer each time, rewritten by each call. User-interface thread only.
const wchar_t* VersionText() noexcept;

}  // namespace kelvo
