// Pixels of the image-backed area and whole pictures.
#include "image/image_area.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QLineF>
#include <cmath>
#include <functional>
#include <limits>
#include <set>

#include "display/canvas_layout.h"
#include "display/palette.h"
#include "display/result_maps.h"
#include "image/picture.h"
#include "model/run_time_error.h"
#include "support/plates.h"

namespace quillane {
namespace {

QRgb Rgb(Color color) { return qRgb(color.red, color.green, color.blue); }

std::set<QRgb> ColorsOf(const QImage& image) {
  std::set<QRgb> colors;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) colors.insert(image.pixel(x, y));
  }
  return colors;
}

TEST(ImageArea, BoxesLeaveNoGapAndLinesAreSharpAtAnyPixelRatio) {
  for (const double ratio : {1.0, 1.25, 1.5, 2.0}) {
    ImageArea area;
    area.Resize(97, 61, ratio);
    EXPECT_EQ(area.Image().width(), std::lround(97 * ratio));
    area.SetScale({0, 7, 13, 0});
    area.SetColor(kBlue);
    area.DrawLine(2.33, 0, 2.33, 7);
    area.DrawBox(1, 1, 3.2, 2.7);
    EXPECT_EQ(ColorsOf(area.Image()), (std::set{Rgb(kBlue), Rgb(kWhite)})) << ratio;
    for (int x = 12; x >= 0; --x) {
      for (int y = 0; y < 7; ++y) {
        area.SetColor((x + y) % 2 == 0 ? kRed : kBlue);
        area.FillBox(x, y, x + 1, y + 1);
      }
    }
    const QImage before = area.Image();
    area.FillBox(0, 0, 13, 7);
    EXPECT_EQ(ColorsOf(before), (std::set{Rgb(kRed), Rgb(kBlue)}))
        << ratio << ": an image taken earlier does not change";
  }
}

TEST(ImageArea, AnEdgeInTheMiddleOfAPixelFallsOnItsUpperEnd) {
  ImageArea area;
  area.Resize(10, 10, 1);
  area.SetScale({0, 0, 10, 10});  // pixels
  area.SetColor(kRed);
  area.FillBox(2.5, 2.4995, 5.4, 4.49);  // a thousandth below the middle counts as the middle
  QImage expected = area.Image();
  expected.fill(Rgb(kWhite));
  for (const int x : {3, 4}) expected.setPixel(x, 3, Rgb(kRed));
  EXPECT_EQ(area.Image(), expected);
}

/// Draws in blue on 50 x 40 pixels, which are the user coordinates; returns the ink's centroid.
QPointF MiddleOf(int lineWidth, const std::function<void(ImageArea&)>& draw) {
  ImageArea area;
  area.Resize(50, 40, 1);
  area.SetScale({0, 0, 50, 40});
  area.SetColor(kBlue);
  area.SetLineWidth(lineWidth);
  draw(area);
  double ink = 0;
  QPointF sum;
  for (int y = 0; y < 40; ++y) {
    for (int x = 0; x < 50; ++x) {
      const int dark = 255 - qRed(area.Image().pixel(x, y));
      ink += dark, sum += dark * QPointF(x + 0.5, y + 0.5);
    }
  }
  return sum / ink;
}

TEST(ImageArea, LinesOfAnySlopeBoxesAndCirclesLieInTheMiddle) {
  const double lines[][4] = {
      {10, 10, 40, 20}, {12, 30, 20, 5}, {10, 35, 35, 10}, {10, 10, 10, 25}, {5, 8, 30, 8}};
  for (const auto& [x1, y1, x2, y2] : lines) {
    for (const int width : {2, 3}) {
      const double inPixel = width % 2 == 0 ? 0 : 0.5;  // an odd width has a pixel in its middle
      const QPointF expected((x1 + x2) / 2 + inPixel, (y1 + y2) / 2 + inPixel);
      const QPointF line = MiddleOf(width, [&](ImageArea& a) { a.DrawLine(x1, y1, x2, y2); });
      EXPECT_LT(QLineF(line, expected).length(), 0.07) << x1 << " " << y1 << " " << width;
      const QPointF box = MiddleOf(width, [&](ImageArea& a) { a.DrawBox(x1, y1, x2, y2); });
      EXPECT_LT(QLineF(box, expected).length(), 0.07) << x1 << " " << y1 << " " << width;
      const QPointF circle = MiddleOf(width, [&](ImageArea& a) { a.DrawCircle(x1, 20, 3); });
      EXPECT_LT(QLineF(circle, {x1 + inPixel, 20 + inPixel}).length(), 0.07) << x1 << " " << width;
    }
  }
}

TEST(ImageArea, AFillCoversWhatWasDrawnSinceTheSameFill) {
  const std::function<void(ImageArea&)> draw[] = {
      [](ImageArea& area) { area.DrawLine(20, 20, 33, 27); },
      [](ImageArea& area) { area.DrawLine(20, 20, 20, 27); },
      [](ImageArea& area) { area.DrawText(20, 20, "x"); }};
  for (const auto& drawSomething : draw) {
    ImageArea area;
    area.Resize(60, 60, 1);
    area.SetScale({0, 0, 60, 60});
    const auto fill = [&area] {
      area.SetColor(kRed);
      area.FillBox(10, 10, 50, 50);
      area.SetColor(kBlue);
    };
    fill();
    drawSomething(area);
    fill();
    EXPECT_EQ(ColorsOf(area.Image().copy(10, 10, 40, 40)), std::set{Rgb(kRed)});
    drawSomething(area);
    EXPECT_GT(ColorsOf(area.Image().copy(10, 10, 40, 40)).size(), 1U);
  }
}

TEST(ImageArea, LegendTextStaysInsideWhateverTheSize) {
  for (const int height : {60, 150, 400, 1000}) {
    ImageArea legend;
    legend.Resize(height * 11 / 42, height, 1.25);
    DrawColorBar(legend, kStressTitle);
    for (int level = 1; level <= kLevelCount; ++level) DrawLevelLabel(legend, level, -8.88e-38F);
    const QImage image = legend.Image();
    EXPECT_EQ(ColorsOf(image.copy(image.width() - 1, 0, 1, image.height())), std::set{Rgb(kWhite)});
  }
}

TEST(ImageArea, NothingDrawnAnywhereIsUndefined) {
  constexpr double kHuge = std::numeric_limits<double>::max();
  const double places[] = {0, 0.5, -1e10, kHuge, -kHuge, HUGE_VAL, -HUGE_VAL};
  ImageArea area;
  area.Resize(20, 20, 1.5);
  for (const UserScale& scale :
       {UserScale{0, 1, 1, 0}, UserScale{0, 0, 0, 0}, UserScale{-kHuge, 1e-300, kHuge, -1e-300}}) {
    area.SetScale(scale);
    for (const double a : places) {
      for (const double b : places) {
        area.DrawLine(a, b, b, 0.25);
        area.DrawBox(a, b, 0.5, a);
        area.FillBox(b, a, a, 0.75);
        area.DrawCircle(a, 0.5, b);
        area.SetTextSize(a, b, "x");
        area.DrawText(a, b, "x");
      }
    }
  }
  area.SetScale({0, 1, 1, 0});
  area.Clear();
  area.SetColor(kRed);
  area.DrawLine(-1e7, -1e7, 1e7 + 1, 1e7 + 1);
  EXPECT_NE(area.Image().pixel(15, 14), Rgb(kWhite)) << "a line through the picture is visible";
  area.Clear();
  for (const double nowhere : {NAN, -NAN}) {
    area.DrawLine(nowhere, 0.5, 0.5, 0.5);
    area.DrawLine(0.5, 0.5, 0.5, nowhere);
    area.DrawBox(0.5, 0.25, nowhere, 0.5);
    area.FillBox(0.5, nowhere, 0.5, 0.25);
    area.DrawText(nowhere, 0.5, "x");
    area.DrawCircle(nowhere, 0.5, 1);
  }
  EXPECT_EQ(ColorsOf(area.Image()), std::set{Rgb(kWhite)});
  area.FillBox(-1e300, -1e300, 1e300, 1e300);
  EXPECT_EQ(ColorsOf(area.Image()), std::set{Rgb(kRed)});
  EXPECT_THROW(area.Resize(100000, 100000, 1), RunTimeError);
}

/// Returns the smallest box around the pixels that differ, in a part of two images.
QRect Difference(const QImage& one, const QImage& other, int width) {
  QRect box;
  for (int y = 0; y < one.height(); ++y) {
    for (int x = 0; x < width; ++x) {
      if (one.pixel(x, y) != other.pixel(x, y)) box |= QRect(x, y, 1, 1);
    }
  }
  return box;
}

TEST(Picture, AFittedDomainFillsItsCanvasWhereverItLiesAndALabelStandsInTheCorner) {
  for (const auto& [rows, columns] : {std::pair{3, 4}, {9, 4}, {2, 7}}) {
    PictureOptions options;
    options.kind = PictureKind::kModel;
    options.fitDomain = true;
    const auto render = [&](Integer state) {
      Model model = test::Plate(rows, columns, 100, state);
      model.DomainX1 += 5000, model.DomainX2 += 5000, model.DomainY1 -= 900, model.DomainY2 -= 900;
      for (int n = 1; n <= model.NodeCount; ++n)
        model.NodeXY(n, 1) += 5000, model.NodeXY(n, 2) -= 900;
      return RenderPicture(model, options);
    };
    const QImage full = render(kCellDesign);
    const int height = full.height(), width = LayOutPicture(full.width(), height).canvasWidth;
    const QRect plate = Difference(full, render(kCellNonDesign), width);
    EXPECT_NEAR(width / 1.15, plate.width(), 3);
    EXPECT_NEAR(height / 1.15, plate.height(), 3);
    EXPECT_NEAR(plate.center().x(), width / 2, 2);
    EXPECT_NEAR(plate.center().y(), height / 2, 2);
    options.label = "X";
    const QRect label = Difference(full, render(kCellDesign), width);
    if (label.isEmpty()) continue;  // without fonts
    EXPECT_NEAR(label.left(), 0.02 * width, 3);
    EXPECT_LE(label.bottom(), 800 / 30);
  }
}

}  // namespace
}  // namespace quillane

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
