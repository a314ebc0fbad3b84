// The solver in its plain form: every sum in the order of the rows as they are stored.
#include "fem/solver.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <string>

#include "model/numbers.h"
#include "model/run_time_error.h"

namespace quillane {
namespace {

/// Throws unless rows 1..n have a count of entries that the store holds, with columns of 1..n.
void CheckRows(Integer n, const Array1<Integer>& count, const Array2<Integer>& column) {
  for (int i = 1; i <= n; ++i) {
    const auto columns = column.Column(i, count(i));
    const auto isEquation = [n](Integer j) { return j >= 1 && j <= n; };
    if (!columns.empty() && std::ranges::all_of(columns.subspan(1), isEquation)) continue;
    throw RunTimeError(ErrorKind::kSubscript, std::string(column.Name()) +
                                                  " leaves equations 1 to " + std::to_string(n) +
                                                  " in row " + std::to_string(i));
  }
}

/// The stored entries of a row, [slot] from 1.
struct Row {
  Row(int i, const Array1<Integer>& count, const Array2<Integer>& column,
      const Array2<Double>& value)
      : columns(column.Column(i, count(i))), values(value.Column(i, count(i))) {}

  std::size_t End() const { return columns.size(); }
  double Times(const Array1<Double>& x, std::size_t k) const { return values[k] * x(columns[k]); }

  std::span<const Integer> columns;
  std::span<const Double> values;
};

double Dot(int n, const Array1<Double>& a, const Array1<Double>& b) {
  double sum = 0.0;
  for (int i = 1; i <= n; ++i) sum += a(i) * b(i);
  return sum;
}

}  // namespace

void TransposeRows(Integer n, Integer capacity, const Array1<Integer>& countIn,
                   Array1<Integer>& countOut, const Array2<Integer>& columnIn,
                   Array2<Integer>& columnOut, const Array2<Double>& valueIn,
                   Array2<Double>& valueOut, Array1<Integer>& fill) {
  CheckRows(n, countIn, columnIn);
  for (int i = 1; i <= n; ++i) {
    countOut(i) = 0;
    for (int k = 1; k <= capacity; ++k) {
      columnOut(k, i) = 0;
      valueOut(k, i) = 0.0;
    }
  }
  for (int i = 1; i <= n; ++i) {
    for (int k = 1; k <= countIn(i); ++k) {
      const int j = columnIn(k, i);
      fill(j) = static_cast<Integer>(countOut(j) + 1);
    }
    for (int k = 1; k <= countIn(i); ++k) {
      const int j = columnIn(k, i);
      columnOut(fill(j), j) = static_cast<Integer>(i);
      valueOut(fill(j), j) = valueIn(k, i);
      countOut(j) = fill(j);
    }
  }
}

void IncompleteCholesky(Integer n, Integer /*capacity*/, const Array1<Integer>& lowerCount,
                        const Array2<Integer>& lowerColumn, const Array2<Double>& lowerValue,
                        const Array1<Double>& diagonalValue, Array2<Double>& factorLower,
                        Array1<Double>& factorInvDiag, double tolerance) {
  for (int i = 1; i <= n; ++i) {
    for (int k = 1; k <= lowerCount(i); ++k) {
      const int j = lowerColumn(k, i);
      double value = lowerValue(k, i);
      int p = 1, q = 1;
      // An empty row j has column 0 in its first slot, so the first comparison only moves p on.
      do {
        const int a = lowerColumn(p, j);
        const int b = lowerColumn(q, i);
        if (a == b) value -= factorInvDiag(b) * factorLower(p, j) * factorLower(q, i);
        if (a <= b) ++p;
        if (a >= b) ++q;
      } while (q <= lowerCount(i) && p <= lowerCount(j));
      factorLower(k, i) = value;
    }
    double pivot = diagonalValue(i);
    for (int k = 1; k <= lowerCount(i); ++k) {
      pivot -= factorLower(k, i) * factorLower(k, i) * factorInvDiag(lowerColumn(k, i));
    }
    Finite(pivot, "a pivot of the factorization");
    if (std::fabs(pivot) <= tolerance) pivot = tolerance;
    factorInvDiag(i) = 1.0 / pivot;
  }
}

void MatrixVectorProduct(Integer n, Integer /*capacity*/, const Array1<Integer>& upperCount,
                         const Array1<Integer>& lowerCount, const Array2<Integer>& upperColumn,
                         const Array2<Integer>& lowerColumn, const Array2<Double>& upperValue,
                         const Array2<Double>& lowerValue, const Array1<Double>& diagonalValue,
                         const Array1<Double>& x, Array1<Double>& y) {
  for (int i = 1; i <= n; ++i) {
    const Row lower(i, lowerCount, lowerColumn, lowerValue);
    const Row upper(i, upperCount, upperColumn, upperValue);
    double sum = 0.0;
    for (std::size_t k = 1; k < lower.End(); ++k) sum += lower.Times(x, k);
    sum += diagonalValue(i) * x(i);
    for (std::size_t k = 1; k < upper.End(); ++k) sum += upper.Times(x, k);
    y(i) = sum;
  }
}

void ApplyPreconditioner(Integer n, Integer /*capacity*/, const Array1<Integer>& upperCount,
                         const Array1<Integer>& lowerCount, const Array2<Integer>& upperColumn,
                         const Array2<Integer>& lowerColumn, const Array2<Double>& factorUpper,
                         const Array2<Double>& factorLower, const Array1<Double>& factorInvDiag,
                         const Array1<Double>& r, Array1<Double>& z) {
  for (int i = 1; i <= n; ++i) {
    const Row lower(i, lowerCount, lowerColumn, factorLower);
    double sum = r(i);
    for (std::size_t k = 1; k < lower.End(); ++k) sum -= lower.Times(z, k);
    z(i) = sum * factorInvDiag(i);
  }
  for (int i = n; i >= 1; --i) {
    const Row upper(i, upperCount, upperColumn, factorUpper);
    double sum = 0.0;
    for (std::size_t k = upper.End(); k-- > 1;) sum += upper.Times(z, k);
    z(i) = z(i) - sum * factorInvDiag(i);
  }
}

SolveReport PreconditionedCG(Integer n, Integer capacity, const Array1<Integer>& upperCount,
                             const Array1<Integer>& lowerCount, const Array2<Integer>& upperColumn,
                             const Array2<Integer>& lowerColumn, const Array2<Double>& upperValue,
                             const Array2<Double>& lowerValue, const Array1<Double>& diagonalValue,
                             const Array1<Double>& load, double tolerance, Array1<Double>& solution,
                             const Array2<Double>& factorUpper, const Array2<Double>& factorLower,
                             const Array1<Double>& factorInvDiag, Array1<Double>& residual,
                             Array1<Double>& direction, Array1<Double>& precond,
                             Array1<Double>& product, Array1<Integer>& /*transposeFill*/) {
  const auto multiply = [&](const Array1<Double>& x, Array1<Double>& y) {
    MatrixVectorProduct(n, capacity, upperCount, lowerCount, upperColumn, lowerColumn, upperValue,
                        lowerValue, diagonalValue, x, y);
  };
  const auto precondition = [&] {
    ApplyPreconditioner(n, capacity, upperCount, lowerCount, upperColumn, lowerColumn, factorUpper,
                        factorLower, factorInvDiag, residual, precond);
  };

  SolveReport report{.equations = n};
  const int iterationLimit = int{n} + 10;
  const double bound = tolerance * tolerance;
  multiply(solution, product);
  for (int i = 1; i <= n; ++i) residual(i) = load(i) - product(i);
  precondition();
  for (int i = 1; i <= n; ++i) direction(i) = precond(i);
  double rho =
      Finite(Dot(n, residual, precond), "the product of residual and preconditioned residual");
  const double loadSquared = Finite(Dot(n, load, load), "the squared norm of the loads");

  for (int iteration = 1; iteration <= iterationLimit; ++iteration) {
    multiply(direction, product);
    const double curvature =
        Finite(Dot(n, direction, product), "the product of direction and stiffness");
    const double alpha = Finite(rho / curvature, "the step size of the solver");
    double residualSquared = 0.0;
    for (int i = 1; i <= n; ++i) {
      solution(i) = solution(i) + alpha * direction(i);
      residual(i) = residual(i) - alpha * product(i);
      residualSquared += residual(i) * residual(i);
    }
    const double ratio = Finite(residualSquared / loadSquared, "the solver's residual");
    report.iterations = iteration;
    report.relativeResidual = std::sqrt(ratio);
    report.converged = ratio <= bound;
    if (report.converged) return report;
    precondition();
    const double rhoNext =
        Finite(Dot(n, residual, precond), "the product of residual and preconditioned residual");
    const double beta = Finite(rhoNext / rho, "the direction factor of the solver");
    rho = rhoNext;
    for (int i = 1; i <= n; ++i) direction(i) = precond(i) + beta * direction(i);
  }
  return report;
}

SolveReport SolveEquations(Integer n, Integer capacity, Array1<Integer>& upperCount,
                           Array1<Integer>& lowerCount, Array2<Integer>& upperColumn,
                           Array2<Integer>& lowerColumn, Array2<Double>& upperValue,
                           Array2<Double>& lowerValue, Array1<Double>& diagonalValue,
                           Array1<Double>& load, double tolerance, Array1<Double>& solution,
                           Array2<Double>& factorUpper, Array2<Double>& factorLower,
                           Array1<Double>& factorInvDiag, Array1<Double>& residual,
                           Array1<Double>& direction, Array1<Double>& precond,
                           Array1<Double>& product, Array1<Integer>& transposeFill) {
  TransposeRows(n, capacity, upperCount, lowerCount, upperColumn, lowerColumn, upperValue,
                lowerValue, transposeFill);
  IncompleteCholesky(n, capacity, lowerCount, lowerColumn, lowerValue, diagonalValue, factorLower,
                     factorInvDiag, tolerance);
  TransposeRows(n, capacity, lowerCount, upperCount, lowerColumn, upperColumn, factorLower,
                factorUpper, transposeFill);
  return PreconditionedCG(n, capacity, upperCount, lowerCount, upperColumn, lowerColumn, upperValue,
                          lowerValue, diagonalValue, load, tolerance, solution, factorUpper,
                          factorLower, factorInvDiag, residual, direction, precond, product,
                          transposeFill);
}

}  // namespace quillane
