#include "mainwindow/modLabelEditing.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "util/libmodGenericTextFunctions.h"

namespace tarvelin {

EditKeyAction FilterEditBoxKey(char32_t Key, std::u32string_view Remaining, bool Numeric, size_t MaxLength,
                               char32_t DecimalSeparator) {
  const bool full = Remaining.size() >= MaxLength;
  if (Key == KeyBackspace) {
    return EditKeyAction::Accept;
  }
  if (Key >= U'0' && Key <= U'9') {
    return full ? EditKeyAction::Discard : EditKeyAction::Accept;
  }
  if (Key == KeyEscape) {
    return EditKeyAction::Cancel;
  }
  if (Key == KeyEnter) {
    return EditKeyAction::Commit;
  }
  if (Key == U'.' || Key == DecimalSeparator) {
    const bool secondPoint = Numeric && (Remaining.find(U'.') != std::u32string_view::npos ||
                                         Remaining.find(DecimalSeparator) != std::u32string_view::npos);
    return secondPoint || full ? EditKeyAction::Discard : EditKeyAction::Accept;
  }
  return Numeric || full ? EditKeyAction::Discard : EditKeyAction::Accept;
}

namespace {

// The whole number a text stands for, or a negative value when it is not one.
double WholeNumberIn(std::string_view Text) {
  const std::string trimmed = TrimBlanks(Text);
  double value = -1;
  const auto [end, error] = std::from_chars(trimmed.data(), trimmed.data() + trimmed.size(), value);
  const bool number = !trimmed.empty() && error == std::errc() && end == trimmed.data() + trimmed.size();
  return number && std::isfinite(value) && value == std::floor(value) ? value : -1;
}

}  // namespace

std::string NextDefaultName(std::string_view Prefix, const std::vector<std::string>& Names, int Count) {
  const std::string stem = std::string(Prefix) + " ";
  double highest = Count;
  for (const std::string& name : Names) {
    if (name.starts_with(stem)) {
      highest = std::max(highest, WholeNumberIn(std::string_view(name).substr(stem.size())));
    }
  }
  // Numbers beyond what a name can usefully carry fall back to the count.
  if (highest >= 1e15) {
    highest = Count;
  }
  return stem + std::to_string(static_cast<long long>(highest) + 1);
}

}  // namespace tarvelin
