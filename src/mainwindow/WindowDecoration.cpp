#include "mainwindow/WindowDecoration.h"

#include <QLabel>
#include <QPainter>
#include <QWidget>
#include <algorithm>
#include <cmath>

#include "mainwindow/MainWindowLayout.h"
#include "mainwindow/PanelLayout.h"
#include "mainwindow/ViewToggles.h"
#include "startup/modStartup.h"

namespace tarvelin {

namespace {

// A paint is made in bands of about this many device pixels (each band is drawn across the whole width), so
// that a grab of a long canvas needs little memory at a time.
constexpr int kBandPixels = 1 << 16;
// Device rows of a kept tile: a multiple of every whole-number pixel ratio up to 6, so that tiles start on
// whole device-independent pixels.
constexpr int kTileRows = 240;

}  // namespace

WindowDecoration::WindowDecoration(QWidget* Client, const PanelLayout& Panels, const ViewToggles& Toggles)
    : client_(Client), panels_(Panels), toggles_(Toggles) {}

// The layout runs several times while a topic is loaded; the client is repainted only when the decoration
// changes.
void WindowDecoration::RepaintGradients() {
  const DecorationLayout layout{
      client_->size(),
      {panels_.picScoreFrame->geometry(), panels_.picWeightingFrame->geometry(), panels_.picRatingFrame->geometry()}};
  const qreal pixelRatio = client_->devicePixelRatioF();
  if (layout == layout_ && pixelRatio == pixelRatio_ && guides_.empty()) {
    return;
  }
  layout_ = layout;
  pixelRatio_ = pixelRatio;
  guides_.clear();
  Forget();
  client_->update();
}

void WindowDecoration::Forget() {
  tiles_.clear();
  tilesRatio_ = 0;
}

DecorationRows WindowDecoration::Render(int Top, int Height, qreal PixelRatio) const {
  DecorationRows rows = PaintDecorationRows(layout_, PixelRatio, Top, Height);
  for (const GuideLine& guide : guides_) {
    DrawLine(rows, PixelRatio, guide.Line, guide.Colour);
  }
  return rows;
}

// With a whole-number pixel ratio every band starts on a device pixel and is copied one to one; otherwise
// the area is drawn in one piece, as the pixels it shows are then sampled across the band edges.
void WindowDecoration::Paint(QPainter& Painter, const QRect& Area) const {
  const qreal ratio = Painter.device()->devicePixelRatioF();
  if (ratio == std::floor(ratio) && Painter.device() == client_) {
    PaintFromTiles(Painter, Area, static_cast<int>(ratio));
    return;
  }
  const int deviceWidth = std::max(1, DecorationDeviceSize(layout_.Client, ratio).width());
  const int bandHeight =
      ratio == std::floor(ratio) ? std::max(1, static_cast<int>(kBandPixels / deviceWidth / ratio)) : Area.height();
  for (int top = Area.top(); top <= Area.bottom(); top += bandHeight) {
    PaintBand(Painter, QRect(Area.left(), top, Area.width(), std::min(bandHeight, Area.bottom() + 1 - top)), ratio);
  }
}

// The device pixels a band shows are its corners scaled and rounded, as for any image drawn at the pixel
// ratio; where they pass the decoration's edge, the drawing cuts the band to match.
void WindowDecoration::PaintBand(QPainter& Painter, const QRect& Band, qreal PixelRatio) const {
  const QRect source(Band.topLeft() * PixelRatio, Band.size() * PixelRatio);
  DecorationRows rows = Render(source.top(), source.height(), PixelRatio);
  if (rows.Image.isNull()) {
    return;
  }
  rows.Image.setDevicePixelRatio(PixelRatio);
  Painter.drawImage(QRectF(Band), rows.Image, QRectF(source.translated(-rows.Origin)));
}

// Tiles the client no longer shows are let go, so that only about a screenful is ever kept.
void WindowDecoration::PaintFromTiles(QPainter& Painter, const QRect& Area, int PixelRatio) const {
  if (tilesRatio_ != PixelRatio) {
    tiles_.clear();
    tilesRatio_ = PixelRatio;
  }
  const QRect shown = client_->visibleRegion().boundingRect().united(Area);
  std::erase_if(tiles_, [&](const auto& Kept) {
    const int top = Kept.first * kTileRows / PixelRatio;
    return top + kTileRows / PixelRatio <= shown.top() || top > shown.bottom();
  });
  const int tileHeight = kTileRows / PixelRatio;
  for (int index = Area.top() / tileHeight; index * tileHeight <= Area.bottom(); ++index) {
    const QRect band = Area.intersected(QRect(Area.left(), index * tileHeight, Area.width(), tileHeight));
    const DecorationRows& rows = Tile(index, PixelRatio);
    if (!rows.Image.isNull()) {
      const QRect source(band.topLeft() * PixelRatio, band.size() * PixelRatio);
      Painter.drawImage(QRectF(band), rows.Image, QRectF(source.translated(-rows.Origin)));
    }
  }
}

const DecorationRows& WindowDecoration::Tile(int Index, int PixelRatio) const {
  const auto kept = tiles_.find(Index);
  if (kept != tiles_.end()) {
    return kept->second;
  }
  DecorationRows rows = Render(Index * kTileRows, kTileRows, PixelRatio);
  rows.Image.setDevicePixelRatio(PixelRatio);
  return tiles_.emplace(Index, std::move(rows)).first->second;
}

void WindowDecoration::HLine(int16_t Y, uint32_t Colour) {
  Forget();
  guides_.push_back({QLine(0, Y, client_->width(), Y), Colour});
  client_->update();
}

void WindowDecoration::VLine(int16_t X, uint32_t Colour) {
  Forget();
  guides_.push_back({QLine(X, 0, X, client_->height()), Colour});
  client_->update();
}

void WindowDecoration::DrawGrid() {
  constexpr uint32_t lattice = 0x00FFFF;
  constexpr uint32_t rule = 0x000000;
  const int w = client_->width();
  const int h = client_->height();
  for (int x = 0; x <= w; x += 10) {
    VLine(static_cast<int16_t>(x), lattice);
  }
  for (int y = 0; y <= h; y += 10) {
    HLine(static_cast<int16_t>(y), lattice);
  }
  for (const int x : {10, 20, w - 10, w - 20}) {
    VLine(static_cast<int16_t>(x), rule);
  }
  HLine(10, rule);
  HLine(static_cast<int16_t>(h - 10), rule);
  const auto sectionRules = [this](bool expanded, const QLabel* heading, int rows) {
    if (!expanded) {
      return;
    }
    for (int row = 0; row < rows; ++row) {
      HLine(static_cast<int16_t>(heading->y() + heading->height() + row * RowStep(RowHeight)), rule);
    }
  };
  const TarvelinTopic& topic = *Program().Topic;
  sectionRules(toggles_.ShowScores(), panels_.lblScores, topic.TotalOptions());
  sectionRules(toggles_.ShowWeightings(), panels_.lblWeightings, topic.TotalAttributes());
  sectionRules(toggles_.ShowRatings(), panels_.lblRatings, topic.TotalOptions() * topic.TotalAttributes());
}

}  // namespace tarvelin
