// Runs with several load cases: their envelope in every output, and what is refused.
#include <QJsonArray>
#include <algorithm>

#include "batch/program.h"

namespace quillane {
namespace {

class LoadCaseRun : public Batch {
 protected:
  void SetUp() override {
    Batch::SetUp();
    for (const auto& [name, row] : {std::pair{"low.model", 1}, {"high.model", 7}}) {
      Model other = model_;
      std::ranges::fill(other.NodeLoad.Raw(), 0);
      other.NodeLoad(test::Node(other, row, 13), 1) = 700;
      SaveModelFile(other, folder_ / name);
    }
  }
};

TEST_F(LoadCaseRun, EveryOutputShowsTheEnvelopeAndTheTablesEachCase) {
  const std::string cases = "plate.model --quiet --load-case low.model --load-case high.model ";
  ASSERT_EQ(Run(cases + "--steps 5 --save e.model --cells c.csv --json j.json --course r.csv "
                        "--frames f --vtu e.vtu"),
            0)
      << err_;
  const Table cells = TableOf("c.csv");
  EXPECT_TRUE(Contains(Text("c.csv"), ",tau_xy,step,stress_1,stress_2,stress_3\n"));
  double compliance = 0, largest = 0;
  Model end;
  OpenModelFile(end, folder_ / "e.model");
  const QJsonArray each = Json("j.json")["loadCases"].toArray();
  ASSERT_EQ(each.size(), 3);
  int number = 0;
  for (const char* name : {"plate.model", "low.model", "high.model"}) {
    Model single;
    OpenModelFile(single, folder_ / name);
    single.CellState = end.CellState;
    SaveModelFile(single, folder_ / "single.model");
    ASSERT_EQ(Run("single.model --quiet --cells s.csv --json s.json"), 0) << err_;
    const Table alone = TableOf("s.csv");
    for (std::size_t k = 1; k < cells.size(); ++k) {
      EXPECT_EQ(cells[k].at(9 + static_cast<std::size_t>(number)), alone[k].at(3)) << name << k;
    }
    const QJsonObject own = each[number++].toObject(), expected = Json("s.json");
    for (const char* figure : {"compliance", "maxStress", "meanStress", "iterations"}) {
      EXPECT_EQ(own[figure], expected[figure]) << name << figure;
    }
    EXPECT_EQ(own["model"].toString().toStdString(), name);
    EXPECT_TRUE(own["connected"].toBool());
    compliance += expected["compliance"].toDouble();
    largest = std::max(largest, expected["maxStress"].toDouble());
  }
  EXPECT_EQ(Json("j.json")["maxStress"].toDouble(), largest);
  EXPECT_DOUBLE_EQ(Json("j.json")["compliance"].toDouble(), compliance);
  const Table course = TableOf("r.csv");
  EXPECT_EQ(course.front().back(), "compliance_3");
  EXPECT_EQ(std::stod(course.back().back()), each[2].toObject()["compliance"].toDouble());
  EXPECT_EQ(course.size(), 7U);
  EXPECT_EQ(Text("f/frame-00005.vtu"), Text("e.vtu"));

  ASSERT_EQ(Run(cases + "--steps 3 --cells half.csv"), 0);
  ASSERT_EQ(Run(cases + "--resume half.csv --steps 2 --save r.model --cells r.csv"), 0) << err_;
  EXPECT_EQ(Text("r.model"), Text("e.model"));
  EXPECT_EQ(Text("r.csv"), Text("c.csv"));
}

TEST_F(LoadCaseRun, OneCaseGivenTwiceIsOneInEveryKindOfRun) {
  const std::string twice = " --load-case plate.model --save b.model --history b.tmp --jobs ";
  for (const std::string how :
       {"--steps 20", "--until-steady --lambda 0.2", "--volume-fraction 0.6"}) {
    const int once = Run("plate.model " + how + " --save a.model --history a.tmp");
    EXPECT_EQ(Run("plate.model " + how + twice + "1"), once) << err_;
    EXPECT_EQ(Text("a.model"), Text("b.model")) << how;
    EXPECT_EQ(Text("a.tmp"), Text("b.tmp")) << how;
    EXPECT_EQ(Run("plate.model " + how + twice + "3 --json j.json"), once) << err_;
    EXPECT_EQ(Text("a.model"), Text("b.model")) << how;
    EXPECT_TRUE(Contains(out_, "\nload case  compliance  ")) << out_;
    EXPECT_EQ(Json("j.json")["loadCases"].toArray().size(), 2);
  }
}

TEST_F(LoadCaseRun, ASearchCarriesTheLoadsOfEveryCase) {
  const std::string run =
      "plate.model --load-case low.model --load-case high.model --json j.json "
      "--volume-fraction 0.75 --quiet";
  ASSERT_EQ(Run(run + " --save a.model"), 0) << err_;
  EXPECT_TRUE(Json("j.json")["connected"].toBool());
  EXPECT_NEAR(Json("j.json")["volumeFraction"].toDouble(), 0.75, 0.021);
  EXPECT_TRUE(Contains(Text("j.json"), "4 design cells at loads were made non-design cells"));
  ASSERT_EQ(Run(run + " --course c.csv --save b.model"), 0) << err_;
  EXPECT_EQ(Text("a.model"), Text("b.model")) << "recording changes no result";
}

TEST_F(LoadCaseRun, WhatIsNoLoadCaseIsRefusedWithTheReason) {
  Save("thick.model", [](Model& m) { m.Thickness = 2; });
  Save("empty.model", [](Model& m) { std::ranges::fill(m.NodeLoad.Raw(), 0); });
  const std::string before = Text("low.model"), with = "plate.model --load-case ";
  ExpectEnds({
      {with + "thick.model", 2,
       "thick.model: not a load case of this model: the thickness is 2 mm, not 1"},
      {with + "''", 2, "--load-case: expects a name"},
      {with + "low.model --save low.model", 2, "--save names the same file as a load case"},
      {with + "low.model --load-case empty.model", 1,
       "stress analysis: load case 3: Floating-point error: "},
  });
  EXPECT_EQ(Text("low.model"), before);
  EXPECT_EQ(Run("plate.model --check --load-case low.model --load-case thick.model"), 1);
  EXPECT_EQ(err_, "");
  EXPECT_EQ(out_,
            "plate.model: nothing looks wrong\nlow.model: nothing looks wrong\nthick.model: " +
                std::string("not a load case of this model: the thickness is 2 mm, not 1\n"));
}

}  // namespace
}  // namespace quillane
