// Japanese sentences as in the other boxes, then details in English.
#include "ui/error_text.h"

#include <QDir>

#include "fem/element_stiffness.h"
#include "fem/pieces.h"
#include "model/number_text.h"

namespace quillane {
namespace {

/// Returns what the user can do about an error; empty if unknown.
QString Advice(const RunTimeError& error) {
  switch (error.Cause()) {
    case ErrorCause::kNone:
      break;
    case ErrorCause::kNoMaterial:
      return "No cell holds material: add design or non-design cells (Shape).";
    case ErrorCause::kAllHeld:
      return "Every node of the material is held: free some nodes (Freedom Conditions, "
             "\"Nothing\").";
    case ErrorCause::kNoLoad:
    case ErrorCause::kIdleLoads:
      return "No load reaches the structure: apply a force at a free node of a cell that holds "
             "material.";
    case ErrorCause::kNoStiffness:
      return "Modulus or thickness is 0: see Design Property.";
    case ErrorCause::kPoissonRatio:
      return "Poisson's ratio must not be 1 or -1: see Design Property.";
    case ErrorCause::kNotHeld:
      return "A load is not connected to supports that hold the plate against moving and turning "
             "(Freedom Conditions).";
    case ErrorCause::kUnsolvable:
      return "The system cannot be solved: modulus, thickness or forces are too large or too "
             "small.";
    case ErrorCause::kLambdaZero:
      return "Lambda must not be 0: see Optimizaion Parameter.";
    case ErrorCause::kGridTooLarge:
      return "The grid is too large: use larger elements or a smaller domain.";
    case ErrorCause::kFileUnwritable:
      return "Check that its folder is writable and that the disk has room.";
    case ErrorCause::kNotAFile:
      return "Remove what has this name.";
  }
  if (error.Kind() != ErrorKind::kOutOfMemory) return {};
  return "Close other programs, or use fewer and larger elements.";
}

QString Details(const RunTimeError& error) {
  const QString text = QString::fromUtf8(error.what()), advice = Advice(error);
  return advice.isEmpty() ? text : text + u'\n' + advice;
}

QString RescueLine(const RescueReport& rescue) {
  if (rescue.path.empty()) {
    return QString("モデルを保存できませんでした。\nThe model could not be saved: %1")
        .arg(QString::fromStdString(rescue.failure));
  }
  return QString(
             "モデルを次のファイルに保存しました。\n"
             "再起動して開いてください。\n"
             "The model was saved. Start the program again and open:\n%1")
      .arg(QDir::toNativeSeparators(QString::fromStdString(rescue.path.string())));
}

struct Doubt {
  QString japanese, english;
};

/// Returns what keeps an analysis of the model from converging.
Doubt DoubtOf(const Model& model) {
  if (!LoadsAreCarried(model)) {
    return {"拘束条件を確認してください。",
            "Check that the plate is held against moving and turning."};
  }
  if (!IsPoissonRatio(model.PoissonRatio)) {
    return {"ポアソン比が適切ではありません。",
            "Poisson's ratio is not between -1 and 0.5: see Design Property."};
  }
  return {"部材が細長すぎます。",
          "The loads are connected to supports that hold the plate, but\n"
          "it is too slender for the solver: use more cells across its\n"
          "members."};
}

}  // namespace

bool LoadsAreCarried(const Model& model) {
  try {
    return LostLoads(model).empty();
  } catch (const RunTimeError&) {
    return false;
  }
}

QString NotConvergedText(const SolveReport& report, const Model& model) {
  const Doubt doubt = DoubtOf(model);
  return QString(
             "応力解析が収束しませんでした。\n"
             "表示された結果は正しくない可能性があります。\n"
             "%3\n\n"
             "The analysis did not converge: after %1 iterations\n"
             "|f - K u| / |f| is %2.\n"
             "The results shown may be wrong.\n"
             "%4")
      .arg(report.iterations)
      .arg(QString::fromStdString(ExponentText(report.trueResidual)), doubt.japanese,
           doubt.english);
}

QString StoppedText(const RunTimeError& error) {
  return "この操作を実行できませんでした。\n\n" + Details(error);
}

QString UndrawableText(const QString& reason) {
  return "このモデルを描くことができません。\n"
         "表示幅と要素サイズ、または開いたファイルを確認してください。\n\n"
         "The model cannot be drawn.\n" +
         reason;
}

QString RefusalText(PressResult refusal) {
  switch (refusal) {
    case PressResult::kElementOutside:
      return "選ばれた要素は設計領域にありません。";
    case PressResult::kNodeOutside:
      return "選ばれた節点は設計領域にありません。";
    default:
      return "設計領域には縦横に1つ以上の要素が必要です。\n"
             "節点と要素の数はそれぞれ32767以下にしてください。";
  }
}

QString MissingResultsText() {
  return "応力解析の前の結果はすべて0です。\nBefore FEA all results are 0.";
}

QString FatalText(const RunTimeError& error, const RescueReport& rescue) {
  return "実行時エラーのためプログラムを終了します。\n\n" + Details(error) + "\n\n" +
         RescueLine(rescue);
}

std::string ReplacedModelText(const RescueReport& rescue) {
  return rescue.path.empty() ? "\nThe previous model could not be saved: " + rescue.failure
                             : "\nThe previous model was saved in:\n" + rescue.path.string();
}

}  // namespace quillane
