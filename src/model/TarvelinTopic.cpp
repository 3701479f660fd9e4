#include "model/TarvelinTopic.h"

#include <cstddef>
#include <iostream>
#include <limits>
#include <sstream>
#include <string_view>
#include <utility>

#include "model/modRounding.h"
#include "util/libmodGenericTextFunctions.h"

namespace tarvelin {

namespace {

// What a new cell, and a new attribute while weightings are not normalised, starts with.
constexpr double DefaultRating = 0.5;
constexpr double DefaultWeighting = 0.5;

// Counts are read as 16-bit numbers, so no list may grow past this.
constexpr std::size_t MaxEntries = std::numeric_limits<int16_t>::max();

TarvelinError AttributeNotFound(int16_t AttributeID, const std::string& Operation) {
  return TarvelinError(ErrAttributeNotFound, "",
                       "Attribute " + std::to_string(AttributeID) + " not found in " + Operation + "().");
}

TarvelinError OptionNotFound(int16_t OptionID, const std::string& Operation) {
  return TarvelinError(ErrOptionNotFound, "",
                       "Option " + std::to_string(OptionID) + " not found in " + Operation + "().");
}

// NaN is no fraction either.
bool IsFraction(double Value) {
  return Value >= 0.0 && Value <= 1.0;
}

int16_t CountOf(std::size_t Size) {
  return static_cast<int16_t>(Size);
}

}  // namespace

TarvelinTopic::TarvelinTopic()
    : attributes_{Attribute{"", DefaultWeighting}}, options_{Option{"", std::vector<double>{DefaultRating}}} {}

const std::string& TarvelinTopic::Name() const {
  return name_;
}

void TarvelinTopic::SetName(std::string NewName) {
  name_ = std::move(NewName);
}

const std::string& TarvelinTopic::Description() const {
  return description_;
}

void TarvelinTopic::SetDescription(std::string NewDescription) {
  description_ = std::move(NewDescription);
}

bool TarvelinTopic::InvertWeights() const {
  return invertWeights_;
}

void TarvelinTopic::SetInvertWeights(bool Invert) {
  invertWeights_ = Invert;
}

bool TarvelinTopic::NormaliseWeights() const {
  return normaliseWeights_;
}

void TarvelinTopic::SetNormaliseWeights(bool Normalise) {
  normaliseWeights_ = Normalise;
}

int16_t TarvelinTopic::Rounding() const {
  return rounding_;
}

// Whole numbers cannot be chosen: every value lies between 0 and 1, so 0 places would leave only 0 and 1.
void TarvelinTopic::SetRounding(int16_t Places) {
  if (Places < 0) {
    rounding_ = -1;
  } else if (Places == 0) {
    rounding_ = 1;
  } else {
    rounding_ = Places;
  }
}

int16_t TarvelinTopic::TotalAttributes() const {
  return CountOf(attributes_.size());
}

void TarvelinTopic::SetTotalAttributes(int16_t AttributeCount) {
  const int16_t target = AttributeCount < 1 ? int16_t{1} : AttributeCount;
  while (TotalAttributes() > target) {
    DeleteAttribute(CountOf(attributes_.size() - 1));
  }
  while (TotalAttributes() < target) {
    AddAttribute("");
  }
}

int16_t TarvelinTopic::TotalOptions() const {
  return CountOf(options_.size());
}

void TarvelinTopic::SetTotalOptions(int16_t OptionCount) {
  const int16_t target = OptionCount < 1 ? int16_t{1} : OptionCount;
  while (TotalOptions() > target) {
    DeleteOption(CountOf(options_.size() - 1));
  }
  while (TotalOptions() < target) {
    AddOption("");
  }
}

// The default name follows the position, so an unnamed entry is renumbered when an earlier one is deleted.
std::string TarvelinTopic::GetAttributeName(int16_t AttributeID) const {
  if (!pIsAttribute(AttributeID)) {
    throw AttributeNotFound(AttributeID, "GetAttributeName");
  }
  const std::string& stored = attributes_[AttributeID].AttributeName;
  return IsBlankValue(std::string_view(stored)) ? "Attribute " + std::to_string(AttributeID + 1) : stored;
}

void TarvelinTopic::SetAttributeName(int16_t AttributeID, std::string NewName) {
  if (!pIsAttribute(AttributeID)) {
    throw AttributeNotFound(AttributeID, "SetAttributeName");
  }
  attributes_[AttributeID].AttributeName = std::move(NewName);
}

std::string TarvelinTopic::GetOptionName(int16_t OptionID) const {
  if (!pIsOption(OptionID)) {
    throw OptionNotFound(OptionID, "GetOptionName");
  }
  const std::string& stored = options_[OptionID].OptionName;
  return IsBlankValue(std::string_view(stored)) ? "Option " + std::to_string(OptionID + 1) : stored;
}

void TarvelinTopic::SetOptionName(int16_t OptionID, std::string NewName) {
  if (!pIsOption(OptionID)) {
    throw OptionNotFound(OptionID, "SetOptionName");
  }
  options_[OptionID].OptionName = std::move(NewName);
}

void TarvelinTopic::AddAttribute(std::string AttributeName) {
  if (attributes_.size() >= MaxEntries) {
    throw TarvelinError::RuntimeFault(ErrOverflow, "TarvelinTopic");
  }
  const double weighting = pDefaultWeighting();
  attributes_.push_back(Attribute{std::move(AttributeName), 0.0});
  pSetWeighting(CountOf(attributes_.size() - 1), weighting, false);
  for (auto& option : options_) {
    option.Ratings.push_back(DefaultRating);
  }
}

// No weighting is rescaled: the normalised reading makes the remaining ones sum to 1 again.
void TarvelinTopic::DeleteAttribute(int16_t AttributeID) {
  if (!pIsAttribute(AttributeID)) {
    throw AttributeNotFound(AttributeID, "DeleteAttribute");
  }
  if (attributes_.size() > 1) {
    attributes_.erase(attributes_.begin() + AttributeID);
    for (auto& option : options_) {
      option.Ratings.erase(option.Ratings.begin() + AttributeID);
    }
    return;
  }
  // A lone attribute has no others whose mean it could take, and it always weighs 1.0 while alone.
  attributes_.front() = Attribute{"", DefaultWeighting};
  for (auto& option : options_) {
    option.Ratings.front() = DefaultRating;
  }
}

void TarvelinTopic::AddOption(std::string OptionName) {
  if (options_.size() >= MaxEntries) {
    throw TarvelinError::RuntimeFault(ErrOverflow, "TarvelinTopic");
  }
  options_.push_back(Option{std::move(OptionName), std::vector<double>(attributes_.size(), DefaultRating)});
}

void TarvelinTopic::DeleteOption(int16_t OptionID) {
  if (!pIsOption(OptionID)) {
    throw OptionNotFound(OptionID, "DeleteOption");
  }
  if (options_.size() > 1) {
    options_.erase(options_.begin() + OptionID);
    return;
  }
  options_.front() = Option{"", std::vector<double>(attributes_.size(), DefaultRating)};
}

void TarvelinTopic::SetWeighting(int16_t AttributeID, double Weighting) {
  pSetWeighting(AttributeID, Weighting, normaliseWeights_);
}

double TarvelinTopic::GetWeighting(int16_t AttributeID) const {
  return pGetWeighting(AttributeID, normaliseWeights_, false);
}

void TarvelinTopic::SetRating(int16_t OptionID, int16_t AttributeID, double Rating) {
  if (!pIsOption(OptionID)) {
    throw OptionNotFound(OptionID, "SetRating");
  }
  if (!pIsAttribute(AttributeID)) {
    throw AttributeNotFound(AttributeID, "SetRating");
  }
  if (!IsFraction(Rating)) {
    throw TarvelinError(ErrInvalidValue, "", "Invalid Rating supplied to SetRating().");
  }
  options_[OptionID].Ratings[AttributeID] = Rating;
}

double TarvelinTopic::GetRating(int16_t OptionID, int16_t AttributeID) const {
  if (!pIsOption(OptionID)) {
    throw OptionNotFound(OptionID, "GetRating");
  }
  if (!pIsAttribute(AttributeID)) {
    throw AttributeNotFound(AttributeID, "GetRating");
  }
  return pRounded(options_[OptionID].Ratings[AttributeID]);
}

// The message names GetRating, as it always has: callers and logs may match on the text.
double TarvelinTopic::GetScore(int16_t OptionID) const {
  if (!pIsOption(OptionID)) {
    throw OptionNotFound(OptionID, "GetRating");
  }
  double score = 0.0;
  for (int16_t attributeID = 0; attributeID < TotalAttributes(); ++attributeID) {
    score += pGetOptionSubTotal(OptionID, attributeID);
  }
  return pRounded(score);
}

// Values are written in full, so that the dump tells apart scores that differ only in their last digits.
void TarvelinTopic::OutputDebugInfo() const {
  std::ostringstream dump;
  dump.precision(17);
  dump << "Topic: [" << name_ << "] Desc: [" << description_ << "]\n";
  dump << "InvertWeights: " << invertWeights_ << " NormaliseWeights: " << normaliseWeights_
       << " Rounding: " << rounding_ << "\n";
  dump << "Attribute(s): " << TotalAttributes() << "\n";
  for (int16_t attributeID = 0; attributeID < TotalAttributes(); ++attributeID) {
    dump << "  " << GetAttributeName(attributeID) << ": " << pGetWeighting(attributeID, false, false)
         << " (normalised: " << pGetWeighting(attributeID, true, false) << ")\n";
  }
  dump << "Option(s): " << TotalOptions() << "\n";
  for (int16_t optionID = 0; optionID < TotalOptions(); ++optionID) {
    dump << "  " << GetOptionName(optionID) << ":";
    for (int16_t attributeID = 0; attributeID < TotalAttributes(); ++attributeID) {
      dump << " " << GetRating(optionID, attributeID);
    }
    dump << " (score: " << GetScore(optionID) << ")\n";
  }
  std::clog << dump.str();
}

// With Normalise, the other weightings are rescaled so that all of them sum to 1 again.
void TarvelinTopic::pSetWeighting(int16_t AttributeID, double Weighting, bool Normalise) {
  if (!pIsAttribute(AttributeID)) {
    throw AttributeNotFound(AttributeID, "SetWeighting");
  }
  if (!IsFraction(Weighting)) {
    throw TarvelinError(ErrInvalidValue, "", "Invalid weighting supplied to SetWeighting().");
  }
  Weighting = pRounded(Weighting);
  if (Normalise) {
    pShareOutAmongOthers(AttributeID, 1.0 - Weighting);
  }
  attributes_[AttributeID].Weighting = Weighting;
}

// Every attribute but AttributeID gets Remainder in proportion to its current share as read (so rounded), or
// an equal part when those shares are all 0. The shares are all taken, of the old sum, before any weighting is
// written; the new values are not rounded.
void TarvelinTopic::pShareOutAmongOthers(int16_t AttributeID, double Remainder) {
  std::vector<double> shares(attributes_.size(), 0.0);
  double sharesTotal = 0.0;
  for (int16_t i = 0; i < TotalAttributes(); ++i) {
    if (i != AttributeID) {
      shares[i] = pGetWeighting(i, true, false);
      sharesTotal += shares[i];
    }
  }
  for (int16_t i = 0; i < TotalAttributes(); ++i) {
    if (i != AttributeID) {
      attributes_[i].Weighting = sharesTotal != 0.0 ? shares[i] * (Remainder / sharesTotal)
                                                    : Remainder / static_cast<double>(attributes_.size() - 1);
    }
  }
}

// The share is computed as 1 / (S / w), not w / S: the two can differ in the last bit, and scores are compared
// for ties.
double TarvelinTopic::pGetWeighting(int16_t AttributeID, bool Normalise, bool NoRounding) const {
  if (!pIsAttribute(AttributeID)) {
    throw AttributeNotFound(AttributeID, "GetWeighting");
  }
  if (attributes_.size() == 1) {
    return 1.0;
  }
  double value = attributes_[AttributeID].Weighting;
  if (Normalise) {
    double total = 0.0;
    for (const auto& attribute : attributes_) {
      total += attribute.Weighting;
    }
    if (total == 0.0) {
      value = 1.0 / static_cast<double>(attributes_.size());
    } else if (value != 0.0) {
      value = 1.0 / (total / value);
    }
  }
  return NoRounding ? value : pRounded(value);
}

// One term of the score: the attribute's normalised, unrounded share times the (possibly inverted) rating.
// The messages name SetRating, as they always have: callers and logs may match on the text.
double TarvelinTopic::pGetOptionSubTotal(int16_t OptionID, int16_t AttributeID) const {
  if (!pIsOption(OptionID)) {
    throw OptionNotFound(OptionID, "SetRating");
  }
  if (!pIsAttribute(AttributeID)) {
    throw AttributeNotFound(AttributeID, "SetRating");
  }
  const double stored = options_[OptionID].Ratings[AttributeID];
  const double rating = invertWeights_ ? 1.0 - stored : stored;
  return pGetWeighting(AttributeID, true, true) * rating;
}

// The weighting an attribute about to be appended starts with: with normalisation on, the mean of the
// weightings already there (as read, so rounded), which gives it an average share.
double TarvelinTopic::pDefaultWeighting() const {
  if (!normaliseWeights_) {
    return DefaultWeighting;
  }
  double total = 0.0;
  for (const auto& attribute : attributes_) {
    total += pRounded(attribute.Weighting);
  }
  return total / static_cast<double>(attributes_.size());
}

double TarvelinTopic::pRounded(double Value) const {
  return rounding_ == -1 ? Value : BankersRound(Value, rounding_);
}

bool TarvelinTopic::pIsAttribute(int16_t AttributeID) const {
  return AttributeID >= 0 && static_cast<std::size_t>(AttributeID) < attributes_.size();
}

bool TarvelinTopic::pIsOption(int16_t OptionID) const {
  return OptionID >= 0 && static_cast<std::size_t>(OptionID) < options_.size();
}

}  // namespace tarvelin
