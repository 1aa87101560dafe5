#include "environment/editor/slide_tabs.h"

#include <string>

#include "environment/editor/art.h"
#include "environment/editor/editor_ctrl.h"
#include "environment/editor/header_buttons.h"
#include "runtime/Font/TextState.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/SpriteDrawing.h"
#include "runtime/Graphics/TextDrawing.h"
#include "runtime/IO/Input.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Room.h"

namespace {

int32_t g_object = -1;

constexpr float FRONT_DEPTH = -100000000000.0F, BACK_DEPTH = -1000;
constexpr double TAB_WIDTH = 20, TAB_HEIGHT = 130;

template <class Use>
void each_tab(Use use) {
  const CObject* object = object_get(g_object);
  if (!object) return;
  for (CInstance* tab : object->instances) use(static_cast<Scheda&>(*tab));
}

}  // namespace

void Scheda::step() {
  EditorCtrl* editor = editor_ctrl();
  if (!editor) return;
  attiva = index == editor->slide_index ? 1 : 0;
  depth = attiva ? FRONT_DEPTH : BACK_DEPTH;
  image_alpha = attiva ? 1.0F : 0.5F;
  if (editor->n_slide >= 5) {
    y = static_cast<float>(TAB_TOP + TAB_STEP * (index - 1) / (editor->n_slide / 4.25));
    image_yscale = static_cast<float>(1.0 / editor->n_slide * 3);
  } else {
    y = TAB_TOP + TAB_STEP * static_cast<float>(index - 1);
    image_yscale = 1;
  }
  const double height = TAB_HEIGHT * image_yscale;
  if (has(instance_flag::VISIBLE) && !editor_modal() && mouse_button_pressed(MOUSE_LEFT) && mouse_x() >= x &&
      mouse_x() < x + TAB_WIDTH && mouse_y() >= y && mouse_y() < y + height) {
    mouse_clear(MOUSE_LEFT);
    editor->show_slide(index);
  }
}

void Scheda::draw() {
  const double height = TAB_HEIGHT * image_yscale;
  const int32_t sprite = art_sprite("scheda");
  if (sprite >= 0) draw_sprite_ext(sprite, 0, x + TAB_WIDTH / 2, y + height / 2, 1, image_yscale, 0, 0xFFFFFF, image_alpha);
  draw_set_font(FONT_EDITOR);
  draw_set_halign(0);
  draw_set_valign(0);
  draw_state().colour = static_cast<uint32_t>(COLOUR_WHITE);
  const double saved = draw_state().alpha;
  draw_state().alpha = image_alpha;
  draw_text(x + 5, y - 15 + height / 2, std::to_string(index));
  draw_state().alpha = saved;
}

void create_tab(int slide) {
  instance_create(TAB_X, TAB_TOP + TAB_STEP * static_cast<float>(slide - 1), g_object, FRONT_DEPTH,
                  [slide](CInstance& made) { static_cast<Scheda&>(made).index = slide; });
}

void destroy_tabs() {
  each_tab([](Scheda& tab) { instance_destroy(tab); });
}

void show_tabs(bool visible) {
  each_tab([visible](Scheda& tab) { tab.set(instance_flag::VISIBLE, visible); });
}

int32_t define_scheda() {
  g_object = ObjectDefinition<Scheda>("scheda")
                 .on(ev::STEP, ev::STEP_NORMAL, &Scheda::step)
                 .on(ev::DRAW, ev::DRAW_NORMAL, &Scheda::draw)
                 .flags(object_flag::VISIBLE)
                 .index();
  return g_object;
}
