#pragma once

#include "graphics/ClipboardService.h"

namespace tarvelin {

// The system clipboard for pictures: the picture replaces whatever the clipboard held.
class QtClipboard final : public ClipboardService {
 public:
  void SetImage(const cDIBSection& Picture) override;
};

}  // namespace tarvelin
