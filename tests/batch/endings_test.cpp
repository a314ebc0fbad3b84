// How a run ends on a late failure, on a signal while it waits, and if its outputs collide with
// those of other runs.
#include "batch/program.h"

namespace quillane {
namespace {

class Ending : public Batch {
 protected:
  /// Returns whether a set of the child's signals, such as "SigCgt:", contains the signal.
  static bool IsIn(const std::string& set, pid_t child, int signal) {
    const std::string status = test::ReadFile("/proc/" + std::to_string(child) + "/status");
    const std::size_t at = status.find(set);
    return at != std::string::npos &&
           (std::stoull(status.substr(at + set.size()), nullptr, 16) >> (signal - 1) & 1) != 0;
  }
};

TEST_F(Ending, AFailureAtAStepLeavesTheLayoutThatStood) {
  const std::string command =
      "'" QUILLANE_BATCH "' plate.model --quiet --steps 32767 --save e.model --json j.json ";
  const std::pair<std::string, const char*> kCases[] = {
      {"(ulimit -f 24; " + command + "--nodes n.csv --history h.tmp)",
       "the history h.tmp cannot be written: File too large"},
      {"(" + command +
           "--nodes n.csv --frames f --size 40x30 & "
           "while [ ! -e f/frame-00002.png ] && kill -0 $!; do sleep 0.01; done; mv f g; wait $!)",
       "f/frame-0"},
  };
  for (const auto& [full, words] : kCases) {
    for (const char* name : {"e.model", "n.csv"}) fs::remove(folder_ / name);
    EXPECT_EQ(Shell(full), 2) << full << err_;
    EXPECT_TRUE(Contains(err_, words)) << err_;
    const int steps = Json("j.json")["steps"].toInt();
    EXPECT_GE(steps, 2);
    const std::string step = std::to_string(steps), nodes = Text("n.csv"), model = Text("e.model");
    EXPECT_TRUE(Contains(err_, "(the files hold the layout after step " + step + ")")) << err_;
    ASSERT_EQ(Run("plate.model --quiet --save e.model --nodes n.csv --steps " + step), 0);
    EXPECT_EQ(Text("e.model"), model) << full;
    EXPECT_EQ(Text("n.csv"), nodes) << full;
    EXPECT_FALSE(Exists("quillane1.part"));
  }
}

TEST_F(Ending, ARequestEndsEveryWait) {
  int pipes[2] = {};
  ASSERT_EQ(pipe(pipes), 0);
  fcntl(pipes[1], F_SETFD, FD_CLOEXEC);
  ASSERT_EQ(mkfifo((folder_ / "p").c_str(), 0600), 0);
  const std::pair<const char*, std::vector<std::string>> kCases[] = {
      {"standard input", {"-", "--quiet"}},
      {"a model from nobody", {"p", "--quiet"}},
      {"a table for nobody", {"plate.model", "--quiet", "--course", "p"}},
      {"a model for nobody", {"plate.model", "--quiet", "--save", "p", "--cells", "c.csv"}},
  };
  for (const auto& [what, arguments] : kCases) {
    const pid_t child = Start(arguments, pipes[0]);
    ASSERT_TRUE(Wait([&] { return IsIn("SigCgt:", child, SIGTERM); })) << what;
    usleep(100000);
    kill(child, SIGTERM);
    EXPECT_EQ(StatusOf(child), 128 + SIGTERM) << what;
    EXPECT_TRUE(Contains(Text("started.txt"), "interrupted")) << what;
  }
  EXPECT_TRUE(Exists("c.csv")) << "the other outputs are written";
  close(pipes[0]);
  close(pipes[1]);
}

TEST_F(Ending, ASecondRequestEndsItAtOnce) {
  // The table has a reader that never reads, so the run fills the pipe and waits.
  Save("large.model", [](Model& m) { m = test::Cantilever(40, 60); });
  ASSERT_EQ(mkfifo((folder_ / "p").c_str(), 0600), 0);
  const int reader = open((folder_ / "p").c_str(), O_RDONLY | O_NONBLOCK);
  int status = 0;
  // The run ends by itself a second after the first request; a busy machine may delay the second.
  for (int attempt = 0; attempt < 9 && status != -SIGTERM; ++attempt) {
    const pid_t child = Start({"large.model", "--quiet", "--cells", "p"});
    ASSERT_TRUE(Wait([&] { return IsIn("SigCgt:", child, SIGTERM); }));
    kill(child, SIGINT);
    ASSERT_TRUE(Wait([&] { return !IsIn("ShdPnd:", child, SIGINT); }));
    usleep(200000);
    kill(child, SIGTERM);
    status = StatusOf(child);
  }
  EXPECT_EQ(status, -SIGTERM);
  close(reader);
}

TEST_F(Ending, OutputsThatAreOneAreRefused) {
  fs::copy_file(folder_ / "plate.model", folder_ / "a.model");
  fs::create_hard_link(folder_ / "a.model", folder_ / "b");
  fs::create_symlink("later.csv", folder_ / "dangling");
  ASSERT_EQ(mkfifo((folder_ / "p").c_str(), 0600), 0);
  const std::string before = Text("a.model");
  ExpectEnds({
      {"a.model --course b", 2, "b: --course names the same file as the model"},
      {"- --course b < a.model", 2, "b: --course names the same file as the model"},
      {"plate.model --cells dangling --nodes later.csv", 2, "names the same file as --cells"},
      {"plate.model --cells p --nodes p", 2, "p: --nodes names the same file as --cells"},
      {"plate.model --course /dev/stdout --cells -", 2,
       "only one output can go to standard output"},
      {"plate.model --history /dev/stdout", 2, "--history: cannot go to standard output"},
      {"plate.model --load-case /dev/stderr", 2, "standard output and error cannot be read"},
      {"- --resume - < a.model", 2, "only one input can come from standard input"},
      {"plate.model --cells out.txt", 2, "out.txt: --cells names the same file as standard output"},
  });
  EXPECT_EQ(Text("a.model"), before);
  ASSERT_EQ(Run("plate.model --steps 3 --course c.csv --quiet"), 0);
  ASSERT_EQ(Run("plate.model --steps 3 --course /dev/stdout --quiet"), 0);
  EXPECT_EQ(out_, Text("c.csv"));
  EXPECT_EQ(Run("plate.model --cells /dev/null --nodes /dev/null --quiet"), 0) << err_;
}

TEST_F(Ending, ASecondRunLeavesThePlacesOfTheFirstAlone) {
  const pid_t first = Start({"plate.model", "--quiet", "--steps", "32767", "--course", "c.csv",
                             "--history", "h.tmp", "--frames", "f", "--size", "40x30"});
  ASSERT_TRUE(Wait([this] { return Exists("f/frame-00001.png"); }));
  for (const std::string place : {"--course c.csv", "--history h.tmp", "--frames f"}) {
    EXPECT_EQ(Run("plate.model --quiet --steps 2 --save s.model " + place), 2) << place;
    EXPECT_TRUE(Contains(err_, ": another run is writing to it")) << err_;
  }
  EXPECT_FALSE(Exists("s.model"));
  kill(first, SIGTERM);
  EXPECT_EQ(StatusOf(first), 128 + SIGTERM);
  EXPECT_EQ(Run("plate.model --quiet --course c.csv --history h.tmp"), 0) << err_;
  EXPECT_EQ(Run("none.model --quiet --course new.csv"), 2);
  EXPECT_FALSE(Exists("new.csv"));
}

TEST_F(Ending, WhatHasNoEffectOrIsUnusualIsTold) {
  ExpectEnds({
      {"plate.model --label --range 0,9", 0, "no effect, neither --image nor --frames is given"},
      {"plate.model --map model --range 0,9 --image i.png", 0, "--range: no effect"},
      {"--check plate.model --steps 4", 0, "--steps: no effect, --check only reads the model"},
      {"plate.model --epsilon 11", 0, "--epsilon 11: outside the potential's scale"},
      {"plate.model --stress-target -4", 0, "--stress-target -4: not above 0"},
      {"plate.model --lambda 2", 0, "--lambda 2: not above 0 and up to 1"},
      {"plate.model --until-steady --steps 2 --quiet", 4, "not at rest after 2 steps"},
      {"plate.model --range -3e38,3e38", 2, "--range: expects a range of single precision"},
      {"plate.model --vtu x.vtk", 2, "--vtu: expects .vtu, not x.vtk"},
      {"'no\033[31m\n\xffne'", 2, "no\\x1b[31m\\x0a\\xffne: no such file\n"},
  });
  const std::string odd = "pl\xff te.model";
  fs::copy_file(folder_ / "plate.model", folder_ / odd);
  ASSERT_EQ(Run("'" + odd + "' --load-case '" + odd + "' --json j.json"), 0) << err_;
  const QJsonObject summary = Json("j.json");
  for (const QJsonObject& named : {summary, summary["loadCases"][1].toObject()}) {
    EXPECT_EQ(named["model"].toString(), "pl%FF te.model");
    EXPECT_EQ(named["modelEncoding"].toString(), "percent");
  }
  EXPECT_TRUE(Contains(out_, "  pl\\xff te.model\n")) << out_;
}

}  // namespace
}  // namespace quillane
