#pragma once

#include <QColor>
#include <cstdint>
#include <string>

#include "insight/InsightText.h"
#include "startup/modStartup.h"

class QDate;

namespace tarvelin {

class TarvelinTopic;

// The colour of an attribute's part of a score bar split by attribute: ten colours that people with the common
// colour-vision deficiencies still tell apart, repeated from the eleventh attribute on. The window's split bars
// use the same colours in the same order.
QColor ReportAttributeColour(int16_t AttributeID);

// The one-page decision report of Topic as made on Date, as the bytes of a file: the title and date, the
// ranking with score bars split by attribute, what could change the best option, the weightings with their
// bands and the ratings, every number written by Numbers. HTML is one self-contained file (pictures as data
// URIs, every name escaped); PDF is an A4 page whose text can be searched and copied. A 10 x 10 topic with
// names of ordinary length fits one page.
std::string DecisionReport(const TarvelinTopic& Topic, ReportFormat Format, const NumberFormat& Numbers,
                           const QDate& Date);

}  // namespace tarvelin
