#pragma once

#include <cstdint>
#include <string>

namespace tarvelin {

// One decision: a title, a description, options (candidates) and attributes (criteria). Every attribute
// has a weighting and every option a rating per attribute, all from 0 to 1.
class TarvelinTopic {
 public:
  TarvelinTopic();

  const std::string& Name() const;
  void SetName(std::string);
  const std::string& Description() const;
  void SetDescription(std::string);
  bool InvertWeights() const;
  void SetInvertWeights(bool);
  bool NormaliseWeights() const;
  void SetNormaliseWeights(bool);
  int16_t Rounding() const;
  void SetRounding(int16_t);
  int16_t TotalAttributes() const;
  void SetTotalAttributes(int16_t);
  int16_t TotalOptions() const;
  void SetTotalOptions(int16_t);
  std::string GetAttributeName(int16_t AttributeID) const;
  void SetAttributeName(int16_t AttributeID, std::string NewName);
  std::string GetOptionName(int16_t OptionID) const;
  void SetOptionName(int16_t OptionID, std::string NewName);
  void AddAttribute(std::string AttributeName);
  void DeleteAttribute(int16_t AttributeID);
  void AddOption(std::string OptionName);
  void DeleteOption(int16_t OptionID);
  void SetWeighting(int16_t AttributeID, double Weighting);
  double GetWeighting(int16_t AttributeID) const;
  void SetRating(int16_t OptionID, int16_t AttributeID, double Rating);
  double GetRating(int16_t OptionID, int16_t AttributeID) const;
  double GetScore(int16_t OptionID) const;
  void OutputDebugInfo() const;
};

}  // namespace tarvelin
