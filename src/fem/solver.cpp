// The solver in its plain form: every sum in the order of the rows as they are stored.
#include "fem/solver.h"

#include <cmath>
#include <string>

#include "model/numbers.h"
#include "model/run_time_error.h"

namespace quillane {
namespace {

/// A triangular row store as raw memory: slot s of row i at [i * stride + s], slots from 1.
struct ConstRows {
  const Integer* count;
  const Integer* column;
  const Double* value;
  std::size_t stride;

  std::size_t At(int row) const { return static_cast<std::size_t>(row) * stride; }
};

/// Checks once what the loops rely on: rows 0..n of at most `capacity` entries exist and their
/// columns lie in 1..n. An access cast to void serves only to throw its subscript error.
ConstRows CheckedRows(Integer n, Integer capacity, const Array1<Integer>& count,
                      const Array2<Integer>& column, const Array2<Double>& value) {
  if (capacity > kRowCapacity) (void)column(capacity, 0);
  const std::size_t stride = column.First().Size();
  if (n > 0) {
    (void)count(n), (void)column(capacity, n), (void)value(capacity, n);
    (void)count(0), (void)column(0, 0), (void)value(0, 0);
  }
  for (int i = 1; i <= n; ++i) {
    if (count(i) < 0 || count(i) > capacity) (void)column(count(i), i);
    for (int k = 1; k <= count(i); ++k) {
      const int j = column(k, i);
      if (j < 1 || j > n) {
        throw RunTimeError(ErrorKind::kSubscript, std::string(column.Name()) + " names equation " +
                                                      std::to_string(j) + ", outside 1 to " +
                                                      std::to_string(n));
      }
    }
  }
  return {count.Raw().data(), column.Raw().data(), value.Raw().data(), stride};
}

/// Returns the elements of an Array1, const or not, whose elements 0..n exist.
template <class Vector>
auto* CheckedVector(Integer n, Vector& vector) {
  if (n > 0) (void)vector(0), (void)vector(n);
  return vector.Raw().data();
}

void Multiply(int n, const ConstRows& upper, const ConstRows& lower, const double* diagonal,
              const double* x, double* y) {
  for (int i = 1; i <= n; ++i) {
    double sum = 0.0;
    const std::size_t low = lower.At(i);
    for (std::size_t k = low + 1; k <= low + static_cast<std::size_t>(lower.count[i]); ++k) {
      sum += lower.value[k] * x[lower.column[k]];
    }
    sum += diagonal[i] * x[i];
    const std::size_t up = upper.At(i);
    for (std::size_t k = up + 1; k <= up + static_cast<std::size_t>(upper.count[i]); ++k) {
      sum += upper.value[k] * x[upper.column[k]];
    }
    y[i] = sum;
  }
}

void Precondition(int n, const ConstRows& factorUpper, const ConstRows& factorLower,
                  const double* invDiag, const double* r, double* z) {
  for (int i = 1; i <= n; ++i) {
    double sum = r[i];
    const std::size_t low = factorLower.At(i);
    for (std::size_t k = low + 1; k <= low + static_cast<std::size_t>(factorLower.count[i]); ++k) {
      sum -= factorLower.value[k] * z[factorLower.column[k]];
    }
    z[i] = sum * invDiag[i];
  }
  for (int i = n; i >= 1; --i) {
    double sum = 0.0;
    const std::size_t up = factorUpper.At(i);
    for (std::size_t k = up + static_cast<std::size_t>(factorUpper.count[i]); k > up; --k) {
      sum += factorUpper.value[k] * z[factorUpper.column[k]];
    }
    z[i] = z[i] - sum * invDiag[i];
  }
}

double Dot(int n, const double* a, const double* b) {
  double sum = 0.0;
  for (int i = 1; i <= n; ++i) sum += a[i] * b[i];
  return sum;
}

}  // namespace

void TransposeRows(Integer n, Integer capacity, const Array1<Integer>& countIn,
                   Array1<Integer>& countOut, const Array2<Integer>& columnIn,
                   Array2<Integer>& columnOut, const Array2<Double>& valueIn,
                   Array2<Double>& valueOut, Array1<Integer>& fill) {
  (void)CheckedRows(n, capacity, countIn, columnIn, valueIn);
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

void IncompleteCholesky(Integer n, Integer capacity, const Array1<Integer>& lowerCount,
                        const Array2<Integer>& lowerColumn, const Array2<Double>& lowerValue,
                        const Array1<Double>& diagonalValue, Array2<Double>& factorLower,
                        Array1<Double>& factorInvDiag, double tolerance) {
  const ConstRows lower = CheckedRows(n, capacity, lowerCount, lowerColumn, lowerValue);
  if (n > 0) (void)factorLower(capacity, n);
  const double* diagonal = CheckedVector(n, diagonalValue);
  double* factor = factorLower.Raw().data();
  double* invDiag = CheckedVector(n, factorInvDiag);
  for (int i = 1; i <= n; ++i) {
    const std::size_t row = lower.At(i);
    const std::size_t rowEnd = row + static_cast<std::size_t>(lower.count[i]);
    for (std::size_t k = row + 1; k <= rowEnd; ++k) {
      const int j = lower.column[k];
      const std::size_t pEnd = lower.At(j) + static_cast<std::size_t>(lower.count[j]);
      std::size_t p = lower.At(j) + 1;
      std::size_t q = row + 1;
      double value = lower.value[k];
      // An empty row j has column 0 in its first slot, so the first comparison only moves p on.
      do {
        const int a = lower.column[p];
        const int b = lower.column[q];
        if (a > b) {
          ++q;
        } else if (a == b) {
          value -= invDiag[b] * factor[p] * factor[q];
          ++p;
          ++q;
        } else {
          ++p;
        }
      } while (q <= rowEnd && p <= pEnd);
      factor[k] = value;
    }
    double pivot = diagonal[i];
    for (std::size_t k = row + 1; k <= rowEnd; ++k) {
      pivot -= factor[k] * factor[k] * invDiag[lower.column[k]];
    }
    Finite(pivot, "a pivot of the factorization");
    if (std::fabs(pivot) <= tolerance) pivot = tolerance;
    invDiag[i] = 1.0 / pivot;
  }
}

void MatrixVectorProduct(Integer n, Integer capacity, const Array1<Integer>& upperCount,
                         const Array1<Integer>& lowerCount, const Array2<Integer>& upperColumn,
                         const Array2<Integer>& lowerColumn, const Array2<Double>& upperValue,
                         const Array2<Double>& lowerValue, const Array1<Double>& diagonalValue,
                         const Array1<Double>& x, Array1<Double>& y) {
  Multiply(n, CheckedRows(n, capacity, upperCount, upperColumn, upperValue),
           CheckedRows(n, capacity, lowerCount, lowerColumn, lowerValue),
           CheckedVector(n, diagonalValue), CheckedVector(n, x), CheckedVector(n, y));
}

void ApplyPreconditioner(Integer n, Integer capacity, const Array1<Integer>& upperCount,
                         const Array1<Integer>& lowerCount, const Array2<Integer>& upperColumn,
                         const Array2<Integer>& lowerColumn, const Array2<Double>& factorUpper,
                         const Array2<Double>& factorLower, const Array1<Double>& factorInvDiag,
                         const Array1<Double>& r, Array1<Double>& z) {
  Precondition(n, CheckedRows(n, capacity, upperCount, upperColumn, factorUpper),
               CheckedRows(n, capacity, lowerCount, lowerColumn, factorLower),
               CheckedVector(n, factorInvDiag), CheckedVector(n, r), CheckedVector(n, z));
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
  const ConstRows upper = CheckedRows(n, capacity, upperCount, upperColumn, upperValue);
  const ConstRows lower = CheckedRows(n, capacity, lowerCount, lowerColumn, lowerValue);
  const ConstRows preUpper = CheckedRows(n, capacity, upperCount, upperColumn, factorUpper);
  const ConstRows preLower = CheckedRows(n, capacity, lowerCount, lowerColumn, factorLower);
  const double* diagonal = CheckedVector(n, diagonalValue);
  const double* invDiag = CheckedVector(n, factorInvDiag);
  const double* f = CheckedVector(n, load);
  double* x = CheckedVector(n, solution);
  double* r = CheckedVector(n, residual);
  double* p = CheckedVector(n, direction);
  double* z = CheckedVector(n, precond);
  double* q = CheckedVector(n, product);

  SolveReport report{.equations = n};
  const int iterationLimit = int{n} + 10;
  const double bound = tolerance * tolerance;
  Multiply(n, upper, lower, diagonal, x, q);
  for (int i = 1; i <= n; ++i) r[i] = f[i] - q[i];
  Precondition(n, preUpper, preLower, invDiag, r, z);
  for (int i = 1; i <= n; ++i) p[i] = z[i];
  double rho = Finite(Dot(n, r, z), "the product of residual and preconditioned residual");
  const double loadSquared = Finite(Dot(n, f, f), "the squared norm of the loads");

  for (int iteration = 1; iteration <= iterationLimit; ++iteration) {
    Multiply(n, upper, lower, diagonal, p, q);
    const double curvature = Finite(Dot(n, p, q), "the product of direction and stiffness");
    const double alpha = Finite(rho / curvature, "the step size of the solver");
    double residualSquared = 0.0;
    for (int i = 1; i <= n; ++i) {
      x[i] = x[i] + alpha * p[i];
      r[i] = r[i] - alpha * q[i];
      residualSquared += r[i] * r[i];
    }
    const double ratio = Finite(residualSquared / loadSquared, "the solver's residual");
    report.iterations = iteration;
    report.relativeResidual = std::sqrt(ratio);
    report.converged = ratio <= bound;
    if (report.converged) return report;
    Precondition(n, preUpper, preLower, invDiag, r, z);
    const double rhoNext =
        Finite(Dot(n, r, z), "the product of residual and preconditioned residual");
    const double beta = Finite(rhoNext / rho, "the direction factor of the solver");
    rho = rhoNext;
    for (int i = 1; i <= n; ++i) p[i] = z[i] + beta * p[i];
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
