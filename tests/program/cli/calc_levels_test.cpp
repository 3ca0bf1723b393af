// What the levels of `tavd calc` rest on, and points that cannot be reached.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "samples.h"
#include "support/json.h"
#include "support/program.h"

namespace {

using clitest::expect_user_error;
using clitest::run_json;
using clitest::run_text;
using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::Not;

struct Levels : testing::Test {
  Levels() { clitest::add_samples(database); }

  std::vector<std::string> command(std::vector<std::string> options) const {
    options.insert(options.begin(), {"calc", database.path()});
    return options;
  }
  std::string text(const std::vector<std::string>& options) const { return run_text(command(options)); }
  Json::Value json(const std::vector<std::string>& options) const { return run_json(command(options)); }

  tavdtest::Database database;
};

// 52.5 dB in each band; the A-weighted sum of eight bands of 0 dB is 6.99 dB.
TEST_F(Levels, SoundPowerIsToldAWeightedBesideTheLevelInTheRoom) {
  const std::string out = text({"ASD", "DAMPER-200", "--qv", "100", "--dp", "200"});
  EXPECT_THAT(out, ContainsRegex("Sound power, A-weighted +59.5 dB.A.\n"));
  EXPECT_THAT(out, ContainsRegex("Sound level in the room +55.5 dB.A.\n"));
  EXPECT_THAT(out, ContainsRegex("Room damping +4.0 dB\n"));
  const Json::Value sound = json({"ASD", "DAMPER-200", "--qv", "100", "--dp", "200"})["sound"];
  EXPECT_NEAR(sound["lw_dBA"].asFloat(), 59.49, 0.01);
  EXPECT_EQ(sound["room_damping_dB"].asFloat(), 4.0F);
}

TEST_F(Levels, RoomDampingIsChosen) {
  const std::vector<std::string> point = {"ASD", "DAMPER-200", "--qv", "100", "--dp", "200"};
  const auto with = [&](const char* damping) {
    std::vector<std::string> options = point;
    options.insert(options.end(), {"--room-damping", damping});
    return json(options)["sound"];
  };
  EXPECT_EQ(with("0")["room_level_dBA"].asFloat(), with("0")["lw_dBA"].asFloat());
  EXPECT_NEAR(with("7.5")["room_level_dBA"].asFloat(), 51.99, 0.01);
  EXPECT_EQ(with("7.5")["lw_dBA"].asFloat(), with("0")["lw_dBA"].asFloat());
  EXPECT_EQ(with("7.5")["room_damping_dB"].asFloat(), 7.5F);
  for (const char* damping : {"much", "", "nan", "4dB"}) {
    EXPECT_THAT(expect_user_error(
                    command({"ASD", "DAMPER-200", "--qv", "100", "--room-damping=" + std::string(damping)})),
                HasSubstr("--room-damping"))
        << damping;
  }
}

TEST_F(Levels, TellWhetherTheEndReflectionIsTakenOff) {
  tavdtest::Record("XYZ", "BOX-200")
      .header(110, 200, 0, 20, 200, 10, 500)
      .floats(1651, {100, 100})
      .rows<clitest::SoundRow>(1653, {{50, 25, 40}, {100, 100, 52}})
      .save(database.handle());
  EXPECT_THAT(text({"XYZ", "BOX-200", "--qv", "100"}),
              HasSubstr("of the duct not taken off; --end-reflection takes it off, as the diagram does\n"));
  EXPECT_THAT(text({"XYZ", "BOX-200", "--qv", "100", "--end-reflection"}),
              HasSubstr("of the duct taken off, as in the diagram\n"));
  EXPECT_EQ(json({"XYZ", "BOX-200", "--qv", "100"})["sound"]["end_reflection"].asString(), "not taken off");
  EXPECT_EQ(json({"XYZ", "BOX-200", "--qv", "100", "--end-reflection"})["sound"]["end_reflection"].asString(),
            "taken off");
}

// The tables of air terminals are without it.
TEST_F(Levels, TellWhereThereIsNoEndReflection) {
  const std::vector<std::string> point = {"ASD", "DAMPER-200", "--qv", "100", "--dp", "200"};
  EXPECT_THAT(text(point), ContainsRegex("End reflection +none to take off\n"));
  EXPECT_EQ(json(point)["sound"]["end_reflection"].asString(), "none");
}

// 25 to 400 Pa at 100 l/s.
TEST_F(Levels, OfAPointThatADamperCannotReachAreMarked) {
  const std::string out = text({"ASD", "DAMPER-200", "--qv", "100", "--dp", "500"});
  EXPECT_THAT(out,
              HasSubstr("At 100 l/s and 500 Pa, cannot be reached: it takes 25.0 - 400.0 Pa at this flow\n"));
  EXPECT_THAT(out, ContainsRegex("Sound power, A-weighted .* not of this point, which cannot be reached\n"));
  EXPECT_THAT(out, ContainsRegex("Sound level in the room .* not of this point, which cannot be reached\n"));
  const Json::Value answer = json({"ASD", "DAMPER-200", "--qv", "100", "--dp", "500"});
  EXPECT_FALSE(answer["operating_point"]["reachable"].asBool());
  EXPECT_FALSE(answer["sound"]["reachable"].asBool());
}

TEST_F(Levels, OfAPointThatCanBeReachedAreNot) {
  const std::string out = text({"ASD", "DAMPER-200", "--qv", "100", "--dp", "400"});
  EXPECT_THAT(out, Not(HasSubstr("reached")));
  const Json::Value answer = json({"ASD", "DAMPER-200", "--qv", "100", "--dp", "150"});
  EXPECT_TRUE(answer["operating_point"]["reachable"].asBool());
  EXPECT_TRUE(answer["sound"]["reachable"].asBool());
  EXPECT_FALSE(json({"ASD", "DAMPER-200", "--qv", "100"})["operating_point"].isMember("reachable"));
}

// 25 Pa at 2 m/s, half a percent to either side.
TEST_F(Levels, AFixedResistanceReachesNoOtherPressureThanItsOwn) {
  const auto reachable = [&](const char* dp) {
    const Json::Value point = json({"AEX", "GRILLE-400x200", "--qv", "2", "--dp", dp})["operating_point"];
    EXPECT_TRUE(point["reachable"].isBool());
    return point["reachable"].asBool();
  };
  EXPECT_TRUE(reachable("25"));
  EXPECT_TRUE(reachable("25.1"));
  EXPECT_FALSE(reachable("25.2"));
  EXPECT_FALSE(reachable("24.8"));
  EXPECT_THAT(text({"AEX", "GRILLE-400x200", "--qv", "2", "--dp", "60"}),
              HasSubstr("cannot be reached: it takes 25.0 Pa at this flow\n"));
}

TEST_F(Levels, AFanReachesThePointsThatItCanServe) {
  EXPECT_THAT(text({"FAN", "FAN-315", "--qv", "150", "--dp", "360"}),
              HasSubstr("cannot be reached: pressure above the fan curve at this flow\n"));
  EXPECT_TRUE(
      json({"FAN", "FAN-315", "--qv", "150", "--dp", "340"})["operating_point"]["reachable"].asBool());
}

TEST_F(Levels, ADeviceForAPressureRangeReachesWhatLiesInIt) {
  tavdtest::Record("XYZ", "RANGE-200").header(130, 200, 0, 20, 200, 10, 500).save(database.handle());
  const auto reachable = [&](const char* dp) {
    return json({"XYZ", "RANGE-200", "--qv", "150", "--dp", dp})["operating_point"]["reachable"].asBool();
  };
  EXPECT_TRUE(reachable("10"));
  EXPECT_TRUE(reachable("500"));
  EXPECT_FALSE(reachable("501"));
  EXPECT_FALSE(reachable("9"));
}

// A kind without a law of pressure.
TEST_F(Levels, WhereTheLibraryCannotTellNothingIsSaid) {
  tavdtest::Record("XYZ", "OTHER").header(150, 200, 0, 20, 200, 10, 500).save(database.handle());
  EXPECT_FALSE(json({"XYZ", "OTHER", "--qv", "150", "--dp", "60"})["operating_point"].isMember("reachable"));
}

}  // namespace
