#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tarvelin {

// One entry of an INI section: a key with its value, a comment, or both; neither is a blank line.
struct EntryView {
  std::string_view Key;
  std::string_view Value;
  std::string_view Comment;
  bool IsBlank() const { return Key.empty() && Comment.empty(); }
};

// The entries of one INI section, packed one after another in a single string, so that a document takes
// about as much memory as its text: a file of short or blank lines would otherwise cost a hundred bytes
// for every line. An entry without key and comment is stored as a blank line (its value cannot be found
// or written).
class PackedEntries {
 public:
  void Append(std::string_view Key, std::string_view Value, std::string_view Comment);
  size_t Count() const { return count_; }
  // How many of the last entries are blank lines.
  size_t TrailingBlanks() const { return trailingBlanks_; }
  void DropTrailingBlanks();

  // The first entry, in order, for which Match is true.
  template <typename Predicate>
  std::optional<EntryView> FindIf(Predicate Match) const {
    for (size_t position = 0; position < packed_.size();) {
      const EntryView entry = pRead(position);
      if (Match(entry)) {
        return entry;
      }
    }
    return std::nullopt;
  }

 private:
  EntryView pRead(size_t& Position) const;

  std::string packed_;  // per entry: a blank marker, or a full marker and three lengths, each before its text
  size_t count_ = 0;
  size_t trailingBlanks_ = 0;
};

}  // namespace tarvelin
