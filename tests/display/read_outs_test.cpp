// Captions of the value read-outs.
#include "display/read_outs.h"

#include <gtest/gtest.h>

#include "model/run_time_error.h"
#include "support/plates.h"

namespace quillane {
namespace {

TEST(ReadOuts, NodesTellLoadAndDisplacement) {
  Model model = test::Plate(2, 3);
  model.NodeLoad(6, 1) = 10;  // grid row 2, column 2
  model.NodeLoad(6, 2) = -0.5;
  model.NodeDisp(6, 2) = -0.25;
  EXPECT_EQ(loadValue(model, 149.9F, 50), "Px = 10N  Py = -0.5N");
  EXPECT_EQ(dispValue(model, 50, 149), "u = 0mm  v = -0.25mm");
  EXPECT_EQ(loadValue(model, 351, 0), std::nullopt);
  EXPECT_EQ(dispValue(Model{}, 0, 0), std::nullopt) << "no domain yet";
}

TEST(ReadOuts, CellsAreCountedFromZero) {
  Model model = test::Plate(2, 3);
  model.CellStress(1, 2) = 0.1;
  model.CellStress(2, 3) = 7;
  model.Potential(1, 2) = 3.5;
  EXPECT_EQ(stressValue(model, 250, 150), "1,2   stress = 0.1MPa") << "of row 1, column 2";
  EXPECT_EQ(neuronValue(model, 250, 150), "1,2   Potential = 3.5");
  EXPECT_EQ(stressValue(model, 250, 50), "0,2   stress = 0MPa") << "the border";
  EXPECT_THROW(neuronValue(model, 250, 50), RunTimeError);
  EXPECT_THROW(neuronValue(model, 50, 150), RunTimeError);
  EXPECT_EQ(stressValue(model, 300, 200), "2,3   stress = 7MPa") << "the upper right corner";
  EXPECT_EQ(stressValue(model, 400, 150), std::nullopt);
  EXPECT_EQ(neuronValue(model, -0.1F, 50), std::nullopt);
}

}  // namespace
}  // namespace quillane
