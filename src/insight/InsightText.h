#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "insight/TopicInsight.h"
#include "model/TarvelinTopic.h"

namespace tarvelin {

// Writes a weighting, rating, score or difference as the window shows it ("0.420" or "42%").
using NumberFormat = std::function<std::string(double)>;

// Each sentence comes in two forms: one reads the topic itself, the other takes the TopicInsight of the topic in
// its current state, for a window that builds many sentences at once.

// The weighting slider's tooltip: "Estate stays best while Price is between 0.420 and 0.870. Below, Hatchback is
// best; above, Coupe."
std::string WeightingBandText(const TarvelinTopic& Topic, int16_t AttributeID, const NumberFormat& Format);
std::string WeightingBandText(const TarvelinTopic& Topic, const TopicInsight& Insight, int16_t AttributeID,
                              const NumberFormat& Format);

// The rating slider's tooltip: "Estate stays best down to 0.550 here", "Coupe would tie the best at 0.720 here"
// or "This rating alone cannot change the best option".
std::string RatingTippingText(const TarvelinTopic& Topic, int16_t OptionID, int16_t AttributeID,
                              const NumberFormat& Format);
std::string RatingTippingText(const TarvelinTopic& Topic, const TopicInsight& Insight, int16_t OptionID,
                              int16_t AttributeID, const NumberFormat& Format);

// A hold share and the radius it was computed for.
struct HoldShareFigure {
  double Share = 0;
  double Radius = 0;
};

// The line under the score bars: "Estate leads Hatchback by 0.029. Closest change: Price weighting 0.800 to
// 0.870 makes Hatchback best. It holds in 87% of weightings within 0.100 of these." The last sentence only with
// a hold share.
std::string InsightLineText(const TarvelinTopic& Topic, const NumberFormat& Format,
                            std::optional<HoldShareFigure> Hold = std::nullopt);
std::string InsightLineText(const TarvelinTopic& Topic, const TopicInsight& Insight, const NumberFormat& Format,
                            std::optional<HoldShareFigure> Hold = std::nullopt);

// A score bar's tooltip, comparing its option with the best one (the best one with its runner-up): "Estate beats
// Coupe mainly on Safety (+0.150) and Comfort (+0.050); Coupe does better on Looks (+0.110)."
std::string ScoreWhyText(const TarvelinTopic& Topic, int16_t OptionID, const NumberFormat& Format);
std::string ScoreWhyText(const TarvelinTopic& Topic, const TopicInsight& Insight, int16_t OptionID,
                         const NumberFormat& Format);

}  // namespace tarvelin
