#include "startup/cRegistryHive.h"

#include <algorithm>
#include <utility>

#include "startup/RegistryValueText.h"
#include "util/libmodGenericTextFunctions.h"

namespace tarvelin {

namespace {

constexpr std::string_view Header = "Windows Registry Editor Version 5.00";
constexpr std::string_view OlderHeader = "REGEDIT4";
constexpr std::string_view LineEnd = "\r\n";

// The registry's own limit; it also keeps a hostile path from costing memory with every level.
constexpr size_t kMaxDepth = 512;

// A key path without trailing separators; nothing when a part is empty or holds a line break, or when the
// path is deeper than the registry allows.
std::optional<std::string> CanonicalPath(std::string_view Section) {
  while (!Section.empty() && Section.back() == '\\') {
    Section.remove_suffix(1);
  }
  size_t start = 0;
  for (size_t depth = 0; start < Section.size(); ++depth) {
    if (depth == kMaxDepth) {
      return std::nullopt;
    }
    const size_t end = std::min(Section.find('\\', start), Section.size());
    const std::string_view part = Section.substr(start, end - start);
    if (part.empty() || HasLineBreak(part)) {
      return std::nullopt;
    }
    start = end + 1;
  }
  return std::string(Section);
}

// How a key is found under its parent: the parent's position and the name without regard to case.
std::string ChildIndexKey(size_t Parent, std::string_view Name) {
  return std::to_string(Parent) + '\\' + LowerCase(Name);
}

// The lines of a hive file still to be read, found one at a time; a hex list may continue over several.
class LineCursor {
 public:
  explicit LineCursor(std::string_view Text) : text_(Text) {}
  bool AtEnd() const { return next_ >= text_.size(); }
  std::string_view Take() {
    const size_t end = std::min(text_.find('\n', next_), text_.size());
    std::string_view line = text_.substr(next_, end - next_);
    next_ = end + 1;
    if (line.ends_with('\r')) {
      line.remove_suffix(1);
    }
    return TrimRegistrySpace(line);
  }

 private:
  std::string_view text_;
  size_t next_ = 0;
};

// "[ROOT\path]": the path of the key, created in the hive; nothing for another root or a cut line.
std::optional<std::string> ParseKeyLine(std::string_view Line, std::string_view RootName, cRegistryHive& Hive) {
  if (!Line.ends_with(']')) {
    return std::nullopt;
  }
  const std::string_view inside = Line.substr(1, Line.size() - 2);
  const size_t separator = std::min(inside.find('\\'), inside.size());
  if (!EqualsIgnoreCase(inside.substr(0, separator), RootName)) {
    return std::nullopt;
  }
  const std::string_view section = separator < inside.size() ? inside.substr(separator + 1) : std::string_view();
  auto path = CanonicalPath(section);
  if (!path || Hive.CreateKey(*path) == cRegistryHive::Edit::Failed) {
    return std::nullopt;
  }
  return path;
}

using NamedValue = std::pair<std::string, RegistryData>;

// `"name"=data` or `@=data`, the data of a hex list possibly continued on the following lines; nothing for
// damage.
std::optional<NamedValue> ParseValueLine(std::string_view Line, LineCursor& Cursor) {
  size_t position = 1;
  std::string name;
  if (Line.starts_with('"')) {
    position = 0;
    auto quoted = ReadRegistryQuoted(Line, position);
    if (!quoted || HasLineBreak(*quoted)) {
      return std::nullopt;
    }
    name = std::move(*quoted);
  } else if (!Line.starts_with('@')) {
    return std::nullopt;
  }
  const std::string_view rest = TrimRegistrySpace(Line.substr(position));
  if (!rest.starts_with('=')) {
    return std::nullopt;
  }
  std::string data(TrimRegistrySpace(rest.substr(1)));
  while (StartsWithIgnoreCase(data, "hex") && data.ends_with('\\')) {
    if (Cursor.AtEnd()) {
      return std::nullopt;
    }
    data.pop_back();
    data += Cursor.Take();
  }
  auto value = ParseRegistryValueText(data);
  return value ? std::optional(NamedValue(std::move(name), std::move(*value))) : std::nullopt;
}

char LowerAscii(char Character) {
  return Character >= 'A' && Character <= 'Z' ? static_cast<char>(Character - 'A' + 'a') : Character;
}

bool LessIgnoringCase(std::string_view A, std::string_view B) {
  return std::lexicographical_compare(A.begin(), A.end(), B.begin(), B.end(),
                                      [](char X, char Y) { return LowerAscii(X) < LowerAscii(Y); });
}

// A name given again replaces the value where the name first stood, as setting it would. Sorting makes
// this one pass however many values a key holds; looking each one up would take time in their square.
void MergeRepeatedNames(std::vector<NamedValue>& Values) {
  std::vector<size_t> order(Values.size());
  for (size_t position = 0; position < order.size(); ++position) {
    order[position] = position;
  }
  std::stable_sort(order.begin(), order.end(),
                   [&](size_t A, size_t B) { return LessIgnoringCase(Values[A].first, Values[B].first); });
  std::vector<bool> repeated(Values.size(), false);
  for (size_t first = 0, last = 0; first < order.size(); first = last + 1) {
    last = first;
    while (last + 1 < order.size() && EqualsIgnoreCase(Values[order[first]].first, Values[order[last + 1]].first)) {
      repeated[order[++last]] = true;
    }
    if (last > first) {
      Values[order[first]].second = std::move(Values[order[last]].second);
    }
  }
  // Each value is judged where it stands before anything is moved onto its place.
  std::erase_if(Values, [&](const NamedValue& Value) { return repeated[static_cast<size_t>(&Value - Values.data())]; });
}

}  // namespace

cRegistryHive::cRegistryHive(std::string RootName) : rootName_(std::move(RootName)), keys_{Key{}} {
  pIndexKeys();
}

std::optional<cRegistryHive> cRegistryHive::Parse(std::string_view Text, std::string RootName) {
  cRegistryHive hive(std::move(RootName));
  LineCursor cursor(Text);
  std::string_view line;
  while (!cursor.AtEnd() && line.empty()) {
    line = cursor.Take();
  }
  if (line.empty()) {
    return hive;
  }
  if (line != Header && line != OlderHeader) {
    return std::nullopt;
  }
  std::optional<size_t> key;
  while (!cursor.AtEnd()) {
    line = cursor.Take();
    if (line.empty() || line.starts_with(';')) {
      continue;
    }
    if (line.starts_with('[')) {
      const auto path = ParseKeyLine(line, hive.rootName_, hive);
      if (!path) {
        return std::nullopt;
      }
      key = hive.pFindPosition(*path);
      continue;
    }
    auto value = key ? ParseValueLine(line, cursor) : std::nullopt;
    if (!value) {
      return std::nullopt;
    }
    hive.keys_[*key].Values.push_back(std::move(*value));
  }
  for (Key& parsed : hive.keys_) {
    MergeRepeatedNames(parsed.Values);
  }
  return hive;
}

std::string cRegistryHive::Serialise() const {
  std::string text = std::string(Header) + std::string(LineEnd);
  std::vector<std::string> paths(keys_.size());  // a parent always comes before its children
  for (size_t position = 0; position < keys_.size(); ++position) {
    const Key& key = keys_[position];
    if (position > 0) {
      paths[position] = key.Parent == 0 ? key.Name : paths[key.Parent] + "\\" + key.Name;
    }
    if (position == 0 && key.Values.empty()) {
      continue;
    }
    text += LineEnd;
    text += "[" + rootName_ + (position == 0 ? "" : "\\" + paths[position]) + "]" + std::string(LineEnd);
    for (const auto& [name, data] : key.Values) {
      text += (name.empty() ? std::string("@") : RegistryQuoted(name)) + "=" + RegistryValueText(data) +
              std::string(LineEnd);
    }
  }
  return text;
}

bool cRegistryHive::KeyExists(std::string_view Section) const {
  const auto path = CanonicalPath(Section);
  return path && pFindKey(*path) != nullptr;
}

cRegistryHive::Edit cRegistryHive::CreateKey(std::string_view Section) {
  const auto path = CanonicalPath(Section);
  if (!path) {
    return Edit::Failed;
  }
  Edit result = Edit::Unchanged;
  size_t position = 0;
  for (size_t start = 0; start < path->size();) {
    const size_t end = std::min(path->find('\\', start), path->size());
    const std::string_view name = std::string_view(*path).substr(start, end - start);
    const auto [found, added] = index_.emplace(ChildIndexKey(position, name), keys_.size());
    if (added) {
      keys_.push_back(Key{position, std::string(name), {}});
      result = Edit::Changed;
    }
    position = found->second;
    start = end + 1;
  }
  return result;
}

cRegistryHive::Edit cRegistryHive::DeleteKey(std::string_view Section) {
  const auto path = CanonicalPath(Section);
  const auto position = path && !path->empty() ? pFindPosition(*path) : std::nullopt;
  if (!position || std::any_of(keys_.begin(), keys_.end(), [&](const Key& key) { return key.Parent == *position; })) {
    return Edit::Failed;
  }
  keys_.erase(keys_.begin() + static_cast<std::ptrdiff_t>(*position));
  for (Key& key : keys_) {
    if (key.Parent > *position) {
      --key.Parent;
    }
  }
  pIndexKeys();
  return Edit::Changed;
}

cRegistryHive::Edit cRegistryHive::SetValue(std::string_view Section, std::string_view Name, const RegistryData& Data) {
  const auto path = CanonicalPath(Section);
  if (!path || HasLineBreak(Name) || CreateKey(*path) == Edit::Failed) {
    return Edit::Failed;
  }
  Key& key = *pFindKey(*path);
  for (auto& [name, data] : key.Values) {
    if (EqualsIgnoreCase(name, Name)) {
      const bool same = data == Data;
      data = Data;
      return same ? Edit::Unchanged : Edit::Changed;
    }
  }
  key.Values.emplace_back(std::string(Name), Data);
  return Edit::Changed;
}

cRegistryHive::Edit cRegistryHive::DeleteValue(std::string_view Section, std::string_view Name) {
  const auto path = CanonicalPath(Section);
  Key* key = path ? pFindKey(*path) : nullptr;
  if (key == nullptr) {
    return Edit::Failed;
  }
  const auto removed =
      std::erase_if(key->Values, [&](const auto& value) { return EqualsIgnoreCase(value.first, Name); });
  return removed == 0 ? Edit::Failed : Edit::Changed;
}

std::optional<RegistryData> cRegistryHive::Value(std::string_view Section, std::string_view Name) const {
  const auto path = CanonicalPath(Section);
  const Key* key = path ? pFindKey(*path) : nullptr;
  if (key != nullptr) {
    for (const auto& [name, data] : key->Values) {
      if (EqualsIgnoreCase(name, Name)) {
        return data;
      }
    }
  }
  return std::nullopt;
}

std::vector<std::string> cRegistryHive::ValueNames(std::string_view Section) const {
  const auto path = CanonicalPath(Section);
  const Key* key = path ? pFindKey(*path) : nullptr;
  std::vector<std::string> names;
  if (key != nullptr) {
    for (const auto& value : key->Values) {
      names.push_back(value.first);
    }
  }
  return names;
}

std::vector<std::string> cRegistryHive::SubKeyNames(std::string_view Section) const {
  const auto path = CanonicalPath(Section);
  const auto position = path ? pFindPosition(*path) : std::nullopt;
  std::vector<std::string> names;
  for (size_t child = 1; position && child < keys_.size(); ++child) {
    if (keys_[child].Parent == *position) {
      names.push_back(keys_[child].Name);
    }
  }
  return names;
}

cRegistryHive::Key* cRegistryHive::pFindKey(std::string_view Path) {
  return const_cast<Key*>(std::as_const(*this).pFindKey(Path));
}

const cRegistryHive::Key* cRegistryHive::pFindKey(std::string_view Path) const {
  const auto position = pFindPosition(Path);
  return position ? &keys_[*position] : nullptr;
}

std::optional<size_t> cRegistryHive::pFindPosition(std::string_view Path) const {
  size_t position = 0;
  for (size_t start = 0; start < Path.size();) {
    const size_t end = std::min(Path.find('\\', start), Path.size());
    const auto found = index_.find(ChildIndexKey(position, Path.substr(start, end - start)));
    if (found == index_.end()) {
      return std::nullopt;
    }
    position = found->second;
    start = end + 1;
  }
  return position;
}

void cRegistryHive::pIndexKeys() {
  index_.clear();
  for (size_t position = 1; position < keys_.size(); ++position) {
    index_.emplace(ChildIndexKey(keys_[position].Parent, keys_[position].Name), position);
  }
}

}  // namespace tarvelin
