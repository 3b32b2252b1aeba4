#ifndef QUILLMERE_TURNED_IMAGES_H_
#define QUILLMERE_TURNED_IMAGES_H_

#include <algorithm>
#include <cmath>

#include "core/fxcrt/fx_coordinates.h"

// Finds the texels under the pixels of an image that is drawn at an odd angle. A pixel shows the
// image if its middle lies on it, and the four texels around that middle are blended.
//
// PDFium takes a pixel's corner for its middle, adds half a texel where it has to take half a one
// away, shows up to one texel more on each side, and rounds the matrix to 256ths, which adds up from
// pixel to pixel. Together that puts a picture of a page's width three pixels off.
class TurnedImage {
 public:
  // |to_texels| maps pixels to the texels of an image of |width| by |height|.
  TurnedImage(const CFX_Matrix& to_texels, int width, int height)
      : columns_(to_texels.a, to_texels.c, to_texels.e, width),
        rows_(to_texels.b, to_texels.d, to_texels.f, height) {}

  // The texel whose middle is at or before the middle of the pixel, and in 256ths how far it is to
  // the next. A column or row of -1 stands for a place outside the image.
  void Transform(int x, int y, int* column, int* row, int* to_right, int* down) const {
    columns_.Find(x + 0.5f, y + 0.5f, column, to_right);
    rows_.Find(x + 0.5f, y + 0.5f, row, down);
  }

 private:
  class Axis {
   public:
    Axis(float by_x, float by_y, float offset, int size)
        : by_x_(by_x),
          by_y_(by_y),
          offset_(offset),
          last_(static_cast<float>(size - 1)),
          margin_(std::max(kOverlap, (std::fabs(by_x) + std::fabs(by_y) - size) / 2)) {}

    void Find(float x, float y, int* texel, int* rest) const {
      const float place = by_x_ * x + (by_y_ * y + offset_);
      if (!(place >= -margin_ && place <= last_ + 1 + margin_)) {
        *texel = -1;
        return;
      }
      const float blended = std::max(std::min(place - 0.5f, last_), 0.0f);
      *texel = static_cast<int>(blended);
      *rest = static_cast<int>((blended - *texel) * 256);
    }

   private:
    // In texels, so that rounding leaves no gap between images that touch.
    static constexpr float kOverlap = 1 / 64.0f;

    float by_x_;
    float by_y_;
    float offset_;
    float last_;
    // Texels beyond the edge that still count as the image. An image that is thinner than the shadow
    // of a pixel is drawn as wide as that, so that lines have no holes and dots do not vanish.
    float margin_;
  };

  Axis columns_;
  Axis rows_;
};

#endif  // QUILLMERE_TURNED_IMAGES_H_
