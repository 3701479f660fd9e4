#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "util/TarvelinError.h"

namespace tarvelin {

// The numbers of the errors a topic raises, always with an empty source.
inline constexpr int32_t ErrAttributeNotFound = ObjectErrorBase + 1001;
inline constexpr int32_t ErrOptionNotFound = ObjectErrorBase + 1002;
inline constexpr int32_t ErrInvalidValue = ObjectErrorBase + 1003;

// One decision: a title, a description, options (candidates) and attributes (criteria). Every attribute
// has a weighting and every option a rating per attribute, all from 0 to 1.
//
// There is always at least one option and one attribute. Identifiers are positions counted from 0: deleting
// an entry moves every later one down by one. An identifier out of range raises ErrAttributeNotFound or
// ErrOptionNotFound, a value outside 0 to 1 ErrInvalidValue, and a count past 32767 the runtime fault
// ErrOverflow; a failed operation changes nothing.
class TarvelinTopic {
 public:
  TarvelinTopic();

  const std::string& Name() const;
  void SetName(std::string);
  const std::string& Description() const;
  void SetDescription(std::string);
  // Scores read every rating as 1 minus itself; the weightings are untouched.
  bool InvertWeights() const;
  void SetInvertWeights(bool);
  // Weightings read as shares summing to 1, and writing one rescales the others to keep that sum.
  bool NormaliseWeights() const;
  void SetNormaliseWeights(bool);
  // Decimal places applied (ties to even) to weightings, ratings and scores when read; -1 for none.
  // Writing 0 stores 1 and any negative value stores -1.
  int16_t Rounding() const;
  void SetRounding(int16_t);
  // Writing a count below 1 keeps one; shrinking deletes from the end, growing adds unnamed entries.
  int16_t TotalAttributes() const;
  void SetTotalAttributes(int16_t);
  int16_t TotalOptions() const;
  void SetTotalOptions(int16_t);
  // An empty stored name reads as "Attribute " or "Option " and the position counted from 1.
  std::string GetAttributeName(int16_t AttributeID) const;
  void SetAttributeName(int16_t AttributeID, std::string NewName);
  std::string GetOptionName(int16_t OptionID) const;
  void SetOptionName(int16_t OptionID, std::string NewName);
  void AddAttribute(std::string AttributeName);
  // Deleting the only attribute (or option) resets it to a fresh, unnamed one instead.
  void DeleteAttribute(int16_t AttributeID);
  void AddOption(std::string OptionName);
  void DeleteOption(int16_t OptionID);
  void SetWeighting(int16_t AttributeID, double Weighting);
  // A lone attribute always weighs 1.0.
  double GetWeighting(int16_t AttributeID) const;
  // Ratings are stored exactly as given and read rounded, never inverted.
  void SetRating(int16_t OptionID, int16_t AttributeID, double Rating);
  double GetRating(int16_t OptionID, int16_t AttributeID) const;
  // The weighted mean of the option's ratings over the normalised weightings, from 0 to 1.
  double GetScore(int16_t OptionID) const;
  // Writes a diagnostic dump of the whole topic to std::clog.
  void OutputDebugInfo() const;
  // Equal topics hold the same stored values, names and settings exactly, so that an edit that changed
  // nothing can be told apart from one that did.
  bool operator==(const TarvelinTopic&) const = default;

 private:
  struct Attribute {
    std::string AttributeName;
    double Weighting = 0.0;
    bool operator==(const Attribute&) const = default;
  };
  struct Option {
    std::string OptionName;
    std::vector<double> Ratings;
    bool operator==(const Option&) const = default;
  };

  void pSetWeighting(int16_t AttributeID, double Weighting, bool Normalise);
  void pShareOutAmongOthers(int16_t AttributeID, double Remainder);
  double pGetWeighting(int16_t AttributeID, bool Normalise, bool NoRounding) const;
  double pGetOptionSubTotal(int16_t OptionID, int16_t AttributeID) const;
  double pDefaultWeighting() const;
  double pRounded(double Value) const;
  bool pIsAttribute(int16_t AttributeID) const;
  bool pIsOption(int16_t OptionID) const;

  std::string name_ = "New Topic";
  std::string description_;
  bool invertWeights_ = false;
  bool normaliseWeights_ = false;
  int16_t rounding_ = -1;
  std::vector<Attribute> attributes_;
  std::vector<Option> options_;
};

}  // namespace tarvelin
