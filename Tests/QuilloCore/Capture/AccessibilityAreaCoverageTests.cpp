#include "QuilloCore/Capture/AccessibilityAreaCoverage.h"

#include "CaptureFixture.h"

namespace quillo::test {
namespace {

class AreaCoverage : public CaptureTest {
 protected:
  /// The warnings of a window of 1000 by 600 points.
  std::vector<std::string> warnings(std::string_view content) {
    application = FakeAccessibilityInterface();
    std::string notation = "window number=7 frame=0,0,1000,600\n";
    notation += content;
    return capture(notation).warnings;
  }
};

const std::vector<std::string> quiet;

TEST_F(AreaCoverage, ordinaryWindowsRaiseNoWarning) {
  EXPECT_EQ(warnings("  toolbar frame=0,0,1000,40\n"
                     "    button frame=5,5,30,30\n"
                     "  AXScrollArea frame=0,40,1000,560\n"
                     "    AXTextArea frame=0,40,1000,560\n"),
            quiet)
      << "an editor";
  EXPECT_EQ(warnings("  AXTable frame=0,0,1000,600\n    AXRow frame=0,0,1000,20\n"), quiet) << "a list with one row";
  EXPECT_EQ(warnings("  text frame=40,40,120,20\n"
                     "  AXTextField frame=300,40,400,24\n"
                     "  text frame=40,150,120,20\n"
                     "  AXCheckBox frame=300,150,200,20\n"
                     "  text frame=40,260,200,20\n"
                     "  AXSlider frame=300,260,400,20\n"
                     "  text frame=40,370,900,60\n"
                     "  button frame=780,550,90,30\n"
                     "  button frame=890,550,90,30\n"),
            quiet)
      << "a dialog";
  EXPECT_EQ(warnings("  AXWebArea frame=0,0,1000,600\n"
                     "    AXHeading frame=250,20,500,40\n"
                     "    text frame=250,70,500,250\n"
                     "    text frame=250,340,500,240\n"),
            quiet)
      << "a narrow column on a wide page";
  EXPECT_EQ(warnings("  AXWebArea frame=0,50,1000,550\n    AXHeading frame=0,50,1000,40\n"), quiet) << "a short page";
}

TEST_F(AreaCoverage, saysHowMuchNoElementExplains) {
  EXPECT_EQ(warnings("  toolbar frame=0,0,1000,40\n"
                     "    button frame=5,5,990,30\n"
                     "  group 'Canvas' frame=0,40,1000,560\n"),
            (std::vector<std::string>{"No element explains about 88% of the window's area. What the application draws "
                                      "there, if anything, shows only in the screenshot."}));
  EXPECT_EQ(warnings("  group frame=0,0,1000,600\n").size(), 1U);
  EXPECT_EQ(warnings("  AXWebArea frame=0,50,1000,550\n"
                     "    AXHeading frame=0,50,1000,40\n"
                     "    group frame=0,90,1000,510\n")
                .size(),
            1U)
      << "a page that draws on a canvas";
  EXPECT_EQ(warnings("  AXWebArea frame=0,50,1000,550\n  button frame=0,0,1000,50\n").size(), 1U)
      << "a page that is not described";
  EXPECT_EQ(warnings("  AXWebArea frame=0,0,1000,600 text='all'\n"), quiet) << "its text explains it";
}

TEST_F(AreaCoverage, aBareFrameComesWithItsRemedy) {
  const auto said = warnings("");
  ASSERT_EQ(said.size(), 1U);
  EXPECT_NE(said[0].find("exposes only the frame of this window"), std::string::npos);
  EXPECT_NE(said[0].find("restart the application"), std::string::npos);
  limits.maximumDepth = 0;
  EXPECT_EQ(warnings("  button\n"), quiet) << "our limit, not the application's silence";
}

TEST_F(AreaCoverage, saysNothingWithoutPositions) {
  EXPECT_EQ(warnings("  button 'A'\n  button 'B'\n"), quiet);
  EXPECT_EQ(AccessibilityAreaCoverage::unexplainedShare({}, {0, 0, 0, 100}), std::nullopt);
}

}  // namespace
}  // namespace quillo::test
