#include "files/PackedEntries.h"

namespace tarvelin {

namespace {

constexpr char kBlank = 0;
constexpr char kFull = 1;

// Seven bits to a byte, the high bit saying that more follow.
void AppendText(std::string& Packed, std::string_view Text) {
  size_t length = Text.size();
  do {
    const auto low = static_cast<unsigned char>(length & 0x7Fu);
    length >>= 7;
    Packed += static_cast<char>(length == 0 ? low : (low | 0x80u));
  } while (length != 0);
  Packed += Text;
}

std::string_view ReadText(std::string_view Packed, size_t& Position) {
  size_t length = 0;
  for (int shift = 0;; shift += 7) {
    const auto byte = static_cast<unsigned char>(Packed[Position++]);
    length |= static_cast<size_t>(byte & 0x7Fu) << shift;
    if ((byte & 0x80u) == 0) {
      break;
    }
  }
  const std::string_view text = Packed.substr(Position, length);
  Position += length;
  return text;
}

}  // namespace

void PackedEntries::Append(std::string_view Key, std::string_view Value, std::string_view Comment) {
  ++count_;
  if (Key.empty() && Comment.empty()) {
    packed_ += kBlank;
    ++trailingBlanks_;
    return;
  }
  packed_ += kFull;
  AppendText(packed_, Key);
  AppendText(packed_, Value);
  AppendText(packed_, Comment);
  trailingBlanks_ = 0;
}

void PackedEntries::DropTrailingBlanks() {
  packed_.resize(packed_.size() - trailingBlanks_);
  count_ -= trailingBlanks_;
  trailingBlanks_ = 0;
}

EntryView PackedEntries::pRead(size_t& Position) const {
  if (packed_[Position++] == kBlank) {
    return {};
  }
  EntryView entry;
  entry.Key = ReadText(packed_, Position);
  entry.Value = ReadText(packed_, Position);
  entry.Comment = ReadText(packed_, Position);
  return entry;
}

}  // namespace tarvelin
