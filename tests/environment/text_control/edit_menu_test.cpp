#include "environment/text_control/edit_menu.h"

#include "environment/rooms.h"
#include "runtime/Graphics/ImageFile.h"
#include "runtime/Graphics/Screen.h"
#include "runtime/IO/WindowFunctions.h"
#include "runtime/Run/Frame.h"
#include "text_box_fixture.h"

namespace {

class EditMenu : public TextBoxTest {
 protected:
  void SetUp() override {
    TextBoxTest::SetUp();
    // The menu belongs to the editor's room.
    while (room_count() <= ROOM_EDITOR) room_add(RoomDescription{"stanza", 800, 600});
    room_goto(ROOM_EDITOR);
    frame_run();
    ASSERT_EQ(current_room_index(), ROOM_EDITOR);
  }
  static int entries() {
    int n = 0;
    for (const char* name : {"tasto_taglia", "tasto_copia", "tasto_incolla", "tasto_maiusc", "tasto_minusc"}) {
      for (const CInstance* i : object_get(object_find(name))->instances) n += i->active();
    }
    return n;
  }
  static CInstance* entry(const char* name) { return object_get(object_find(name))->instances.front(); }
  static void button(int which, bool down, int x, int y) {
    input_mouse_move(x, y);
    input_mouse_button_event(which, down);
    input_begin_frame();
    frame_update();
  }
};

TEST_F(EditMenu, ARightClickOpensItAndAnEntryChangesTheSelection) {
  ObjInputText& box = multiline();
  type(box, "ciao mondo");
  press(box, KEY_LEFT, true, true);
  ASSERT_TRUE(box.has_selection());
  window_set_cursor(-2);
  button(MOUSE_RIGHT, true, 100, 20);
  button(MOUSE_RIGHT, false, 100, 20);
  EXPECT_EQ(entries(), 0) << "only over text, where the pointer is the text beam";
  window_set_cursor(-4);
  button(MOUSE_RIGHT, true, 100, 20);
  button(MOUSE_RIGHT, false, 100, 20);
  ASSERT_EQ(entries(), 5);
  for (int k = 0; k < 8; ++k) button(MOUSE_RIGHT, false, 100, 20);
  const CInstance* upper = entry("tasto_maiusc");
  EXPECT_EQ(upper->y, 20 + 150) << "the fourth entry fanned out to 150 below the click";
  // Drawn over the box: each entry a light face with its word. The picture is kept for a person to look at.
  current_room()->background_colour = 0xFFFFFF;
  frame_draw();
  Image shown;
  ASSERT_TRUE(screen_read(shown));
  image_save_png("edit_menu.png", shown);
  const auto inked = [&](int left, int top, int right, int bottom) {
    int n = 0;
    for (int y = top; y < bottom; ++y) {
      for (int x = left; x < right; ++x) n += shown.rgba[static_cast<size_t>((y * shown.width + x) * 4)] < 128;
    }
    return n;
  };
  EXPECT_GT(inked(130, 175, 220, 200), 20) << "\"MAIUSCOLO\" written on its entry";
  EXPECT_EQ(inked(260, 175, 330, 200), 0) << "nothing right of the entries";
  button(MOUSE_LEFT, true, static_cast<int>(upper->x) + 10, static_cast<int>(upper->y) + 10);
  input_begin_frame();
  frame_update();
  EXPECT_EQ(box.text_utf8(), "ciao MONDO");
  EXPECT_FALSE(box.enabled);
  button(MOUSE_LEFT, false, 0, 0);
  EXPECT_EQ(entries(), 0) << "the release closes the menu";
}

}  // namespace
