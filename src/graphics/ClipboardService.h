#pragma once

namespace tarvelin {

class cDIBSection;

// The clipboard as the core sees it; the window side implements it over the platform's clipboard.
class ClipboardService {
 public:
  virtual ~ClipboardService() = default;

  // Empties the clipboard and puts the picture on it as a plain bitmap; the clipboard keeps its own copy.
  // When the clipboard cannot be opened it stays as it was and nothing is reported.
  virtual void SetImage(const cDIBSection& Picture) = 0;
};

}  // namespace tarvelin
