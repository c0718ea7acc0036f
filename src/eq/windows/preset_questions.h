#pragma once

#include "eq/presets_feature.h"

namespace kelvo {

// The questions as dialogs on the screen.
class PresetQuestions final : public PresetPrompts {
 public:
  bool AskName(WindowHandle parent, wchar_t (&name)[kTextCapacity]) noexcept override;
  bool ConfirmOverwrite(WindowHandle parent) noexcept override;
};

}  // namespace kelvo
