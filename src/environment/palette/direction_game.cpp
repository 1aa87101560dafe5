// The direction game of the tutorial's mode: while the tutorial's phrase
// stands in the program, gioco_mov_int_ctrl keeps six buttons on the right
// of the screen, the character's two colours and four arrows, and each
// press writes its command as a line of the program.
#include "environment/editor/art.h"
#include "environment/editor/editor_ctrl.h"
#include "environment/palette/palette.h"
#include "environment/palette/palette_catalogue.h"
#include "environment/palette/palette_element.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Graphics/SpriteDrawing.h"
#include "runtime/IO/Input.h"
#include "runtime/Room/Collision.h"
#include "runtime/Room/Room.h"

namespace {

int32_t g_control = -1, g_button = -1;

class GiocoMovInt : public CInstance {
 public:
  using CInstance::CInstance;

  // The commands go in at the caret, one under the other in the order pressed.
  void left_pressed() {
    if (has(instance_flag::VISIBLE) && !editor_modal()) insert_at_caret(direction_moves()[static_cast<size_t>(move)].text);
  }

  void draw() {
    const bool over = instance_contains_point(*this, static_cast<float>(mouse_x()), static_cast<float>(mouse_y()));
    draw_sprite_ext(sprite_index, image_index, x, y, over ? 1.08 : 1, over ? 1.08 : 1, 0, image_blend, 1);
  }

  int move = 0;  // in the list of the game's commands
};

class GiocoMovIntCtrl : public CInstance {
 public:
  using CInstance::CInstance;

  void create() {
    // A fresh line for the commands to come.
    insert_at_caret("\n");
    const auto moves = direction_moves();
    for (size_t m = 0; m < moves.size(); ++m) {
      const DirectionMove& move = moves[m];
      instance_create(move.x, move.y, g_button, 0, [&](CInstance& made) {
        auto& button = static_cast<GiocoMovInt&>(made);
        button.move = static_cast<int>(m);
        button.image_speed = 0;
        if (move.frame >= 0) {
          button.sprite_index = panel_art("freccia_direzione", 4, true);
          button.image_index = static_cast<float>(move.frame);
        } else {
          button.sprite_index = art_sprite(m == 0 ? "personaggio_corpo" : "personaggio_occhi");
        }
      });
    }
  }

  void destroy() { instances_destroy(g_button); }
};

}  // namespace

void define_direction_game() {
  g_button = ObjectDefinition<GiocoMovInt>("gioco_mov_int")
                 .on(ev::MOUSE, MOUSE_EVENT_LEFT_PRESSED, &GiocoMovInt::left_pressed)
                 .on(ev::DRAW, ev::DRAW_NORMAL, &GiocoMovInt::draw)
                 .flags(object_flag::VISIBLE)
                 .index();
  g_control = ObjectDefinition<GiocoMovIntCtrl>("gioco_mov_int_ctrl")
                  .on(ev::CREATE, 0, &GiocoMovIntCtrl::create)
                  .on(ev::DESTROY, 0, &GiocoMovIntCtrl::destroy)
                  .index();
}
