#include "fem/element_stiffness.h"

#include <cmath>

#include "model/numbers.h"

namespace quillane {

void CalcElementStiffness(Model& model) {
  const double nu = model.PoissonRatio;
  const double c = Finite((model.YoungModulus * model.Thickness) / (1.0 - std::pow(nu, 2.0)),
                          "the plate stiffness E t / (1 - nu^2)", CauseOfPoissonRatio(nu));
  // s3, s7 and s8 equal s1, s6 and s4 and are deliberately computed again: each is one kind of
  // entry.
  const double s1 = ((1.0 - nu) / 6.0 + 1.0 / 3.0) * c;
  const double s2 = ((1.0 - nu) / 8.0 + nu / 4.0) * c;
  const double s3 = ((1.0 - nu) / 6.0 + 1.0 / 3.0) * c;
  const double s4 = ((1.0 - nu) / 12.0 + (-1.0) / 3.0) * c;
  const double s5 = (nu / 4.0 - (1.0 - nu) / 8.0) * c;
  const double s6 = (1.0 / 6.0 - (1.0 - nu) / 6.0) * c;
  const double s7 = (1.0 / 6.0 - (1.0 - nu) / 6.0) * c;
  const double s8 = ((1.0 - nu) / 12.0 - 1.0 / 3.0) * c;

  const double lower[8][8] = {
      {s1},
      {s2, s3},
      {s4, -s5, s1},
      {s5, s6, -s2, s3},
      {-s1 / 2.0, -s2, s7, -s5, s1},
      {-s2, -s3 / 2.0, s5, s8, s2, s3},
      {s7, s5, -s1 / 2.0, s2, s4, -s5, s1},
      {-s5, s8, s2, -s3 / 2.0, s5, s6, -s2, s3},
  };
  for (int row = 1; row <= 8; ++row) {
    for (int column = 1; column <= row; ++column) {
      const double value = Finite(lower[row - 1][column - 1], "an entry of the element stiffness");
      model.ElementStiffness[row][column] = value;
      model.ElementStiffness[column][row] = value;
    }
  }
}

}  // namespace quillane
