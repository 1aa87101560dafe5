// Projects as a learner keeps them, through the real window: a program typed
// and saved as "primo", a new project, "primo" opened again from its card,
// renamed and deleted, with the index and the folder checked at each step;
// then the save and open screens with seven projects, kept as pictures
// (editor_window_save_screen.png, editor_window_open_screen.png).
#include "environment/editor_window/velant_window.h"
#include "support/CloseRequest.h"

namespace {

using namespace std::chrono_literals;
using namespace velant_window;

constexpr int CARD_X = 200, CARD_Y = 230;        // inside the first card
constexpr int RENAME_X = 493, DELETE_X = 523, ICONS_Y = 263;  // the middles of the first card's icons
constexpr int QUESTION_LEFT_BUTTON_X = 550, QUESTION_BUTTONS_Y = 548;

std::string index_text(const std::filesystem::path& area) {
  return read_whole_file(area / "Progetti salvati" / "Progetti salvati.ini");
}

void write_projects(const std::filesystem::path& area, int n) {
  std::string index;
  for (int k = 1; k <= n; ++k) {
    const std::string name = k == 3 ? "Il gioco della tartaruga che cammina piano piano" : "progetto " + std::to_string(k);
    std::ofstream(area / "Progetti salvati" / (name + ".txt")) << "INIZIA\n";
    index += "[" + std::to_string(k) + "]\r\ntitolo=\"" + name + "\"\r\ndata=\"" + std::to_string(46350 + k * 1.37) + "\"\r\n";
  }
  std::ofstream(area / "Progetti salvati" / "Progetti salvati.ini", std::ios::binary) << index;
}

TEST(ProjectWindow, ALearnerSavesOpensRenamesAndDeletesAProject) {
  if (!x_tools_present()) GTEST_SKIP() << "needs an X display, xdotool and xwd";
  const XServerHold keep_server_up = hold_x_server();
  ASSERT_NE(keep_server_up, nullptr);
  TempFolder data("velant_projects");
  const std::filesystem::path area = data.path() / "Velant";
  const std::filesystem::path primo = area / "Progetti salvati" / "primo.txt";

  Velant velant(data.path().string());
  ASSERT_NE(velant.window(), 0u) << velant.report();
  velant.screen();
  ASSERT_TRUE(velant.type("INIZIA") && velant.key("Return") && velant.type("x = 1"));
  ASSERT_TRUE(wait_until([&] { return read_whole_file(area / "backup.txt") == "INIZIA\nx = 1"; }));

  // Saved as "primo": its file, and one entry in the index.
  ASSERT_TRUE(velant.click(110, 23));
  velant.screen("", 1000ms);
  ASSERT_TRUE(velant.type("primo") && velant.click(1040, 75));
  ASSERT_TRUE(wait_until([&] { return std::filesystem::exists(primo); })) << velant.report();
  EXPECT_EQ(read_whole_file(primo), "INIZIA\nx = 1");
  EXPECT_NE(index_text(area).find("[1]\r\n"), std::string::npos);
  EXPECT_NE(index_text(area).find("titolo=\"primo\""), std::string::npos);

  // A new project asks nothing after a save, and empties the page.
  velant.screen("", 600ms);
  ASSERT_TRUE(velant.click(150, 23));
  ASSERT_TRUE(wait_until([&] { return read_whole_file(area / "backup.txt").empty(); }));

  // "primo" from its card: the text is back in the editor.
  ASSERT_TRUE(velant.click(70, 23));
  velant.screen("", 1000ms);
  sh("xdotool mousemove --window " + std::to_string(velant.window()) + " " + std::to_string(CARD_X) + " " +
     std::to_string(CARD_Y));
  const Image open_screen = velant.screen("", 500ms);
  EXPECT_TRUE(near(open_screen, CARD_X + 250, CARD_Y - 30, rgb_of(make_colour_hsv(145, 150, 255)), 40))
      << "the card under the pointer";
  ASSERT_TRUE(velant.click(CARD_X, CARD_Y));
  ASSERT_TRUE(wait_until([&] { return read_whole_file(area / "backup.txt") == "INIZIA\nx = 1"; }))
      << read_whole_file(area / "backup.txt");
  EXPECT_GT(inked(velant.screen("opened"), 50, 50, 200, 95), 150) << "the program on the page";

  // Renamed "secondo": the file follows the index.
  ASSERT_TRUE(velant.click(70, 23));
  velant.screen("", 1000ms);
  ASSERT_TRUE(velant.click(RENAME_X, ICONS_Y));
  velant.screen("rename", 800ms);
  ASSERT_TRUE(velant.key("ctrl+a") && velant.type("secondo") && velant.click(QUESTION_LEFT_BUTTON_X, QUESTION_BUTTONS_Y));
  ASSERT_TRUE(wait_until([&] { return std::filesystem::exists(area / "Progetti salvati" / "secondo.txt"); }));
  EXPECT_FALSE(std::filesystem::exists(primo));
  EXPECT_NE(index_text(area).find("titolo=\"secondo\""), std::string::npos);
  EXPECT_EQ(index_text(area).find("primo"), std::string::npos);

  // Deleted: no file, no section.
  velant.screen("", 600ms);
  ASSERT_TRUE(velant.click(DELETE_X, ICONS_Y));
  velant.screen("delete", 800ms);
  ASSERT_TRUE(velant.click(QUESTION_LEFT_BUTTON_X, QUESTION_BUTTONS_Y));
  ASSERT_TRUE(wait_until([&] { return !std::filesystem::exists(area / "Progetti salvati" / "secondo.txt"); }));
  EXPECT_EQ(index_text(area).find("[1]"), std::string::npos) << index_text(area);

  // Seven projects on both screens; on the save screen the typed name marks the card it would overwrite.
  ASSERT_TRUE(velant.click(1040, 75));  // "Annulla"
  write_projects(area, 7);
  velant.screen("", 600ms);
  ASSERT_TRUE(velant.click(70, 23));
  velant.screen("", 800ms);
  sh("xdotool mousemove --window " + std::to_string(velant.window()) + " 300 330");
  const Image seven = velant.screen("open_screen", 800ms);
  EXPECT_TRUE(near(seven, 300, 330, rgb_of(make_colour_hsv(145, 150, 255)), 40));
  EXPECT_TRUE(near(seven, 700, 230, rgb_of(make_colour_hsv(145, 100, 255)), 40)) << "the sixth card heads column two";
  ASSERT_TRUE(velant.click(1040, 75));
  velant.screen("", 600ms);
  ASSERT_TRUE(velant.click(110, 23));
  velant.screen("", 1000ms);
  ASSERT_TRUE(velant.key("ctrl+a") && velant.type("progetto 5"));
  const Image save = velant.screen("save_screen", 1000ms);
  EXPECT_TRUE(near(save, 450, 430, rgb_of(make_colour_hsv(40, 150, 255)), 40)) << "the card to be overwritten";

  // The close button on a project screen is "Annulla": back in the editor, still running.
  ASSERT_TRUE(send_close_request(velant.window()));
  EXPECT_TRUE(near(velant.screen("", 1000ms), 600, 400, {255, 255, 255})) << "the editor's page";
  EXPECT_TRUE(velant.running());
}

}  // namespace
