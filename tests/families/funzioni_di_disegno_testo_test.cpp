// The text of funzioni_di_disegno drawn for real: the plain and the full
// road of disegna_testo, its keys, the draw state it leaves, and the fonts
// of ottieni_stile_testo.
#include "funzioni_di_disegno_fixture.h"
#include "runtime/Font/Font.h"
#include "runtime/Font/TextLayout.h"
#include "runtime/Graphics/TextDrawing.h"

namespace {

class DisegnoTesto : public DrawingProgramTest {
 protected:
  // The canvas after `draw` has drawn on it in black, from white, left white again after.
  // Take what a statement drew before calling it: it clears the canvas.
  template <typename Draw>
  std::vector<uint8_t> drawn_by(Draw draw) {
    clear_canvas();
    draw_state().colour = 0;
    draw();
    draw_state().colour = WHITE;
    std::vector<uint8_t> pixels = canvas_pixels();
    clear_canvas();
    return pixels;
  }
  // The canvas after the full road has drawn `text` at (150, 150) with every other key at its default.
  std::vector<uint8_t> full_road_of(std::string_view text) {
    return drawn_by([&] { draw_text_ext_transformed(150, 150, text, 20, 2000, 1, 1, 0); });
  }
};

TEST_F(DisegnoTesto, DefaultsTakeTheFullRoadWhichReadsAnUnquotedTextAsAVariable) {
  // The default TESTO has no quotes: it names a variable, and there is none.
  run_one_frame("disegna testo");
  const Ink box = ink();
  const std::vector<uint8_t> drawn = canvas_pixels();
  EXPECT_EQ(drawn, full_road_of("no var"));
  EXPECT_GE(box.left, 150);
  EXPECT_LE(box.left, 153);
  EXPECT_GE(box.top, 150);

  ProgramInstance& p = sole_program("INIZIA\nfrase = \"Ciao\"\nCICLO CONTINUO\ndisegna testo (TESTO: frase)");
  run_inizia(p);
  clear_canvas();
  run_frame(p);
  const std::vector<uint8_t> variable = canvas_pixels();
  EXPECT_EQ(variable, full_road_of("Ciao"));
}

TEST_F(DisegnoTesto, FullRoadFillsPlaceholdersWorksOutGenitivesAndDropsLongZeros) {
  ProgramInstance& p = sole_program(
      "INIZIA\nnome = \"Ada\"\ndue = ottieni colore rgb (ROSSO: 2)\nCICLO CONTINUO\n"
      "disegna testo (TESTO: \"Ciao <nome>\")");
  run_inizia(p);
  run_frame(p);
  const std::vector<uint8_t> filled = canvas_pixels();
  EXPECT_EQ(filled, full_road_of("Ciao Ada"));

  // Of a number stored with 30 decimals the point and ten zeros go; the
  // other twenty stay. A computed number shows at most two decimals.
  EXPECT_EQ(stored(p, "due"), exact(2));
  ProgramInstance& q = sole_program(
      "INIZIA\ndue = ottieni colore rgb (ROSSO: 2)\nCICLO CONTINUO\ndisegna testo (TESTO: \"<due> <due/4>\")");
  run_inizia(q);
  clear_canvas();
  run_frame(q);
  const std::vector<uint8_t> number_shown = canvas_pixels();
  EXPECT_EQ(number_shown, full_road_of("200000000000000000000 0.50"));

  // The round brackets of the text stay round.
  clear_canvas();
  run_one_frame("disegna testo (TESTO: \"(uno) (due) (tre) (quattro)\")");
  const std::vector<uint8_t> brackets = canvas_pixels();
  EXPECT_EQ(brackets, full_road_of("(uno)(due)(tre)(quattro)"));

  clear_canvas();
  run_one_frame("disegna testo (TESTO: \"punti_del_gatto\")");
  const std::vector<uint8_t> genitive = canvas_pixels();
  EXPECT_EQ(genitive, full_road_of("punti del gatto"));
}

TEST_F(DisegnoTesto, PlainRoadDrawsTheTextAsWrittenForOneCombinationOfKeys) {
  // LARGHEZZA CASELLA 800 with an INTERLINEA other than 20 and all else at
  // its default: the placeholder is drawn as written, not filled.
  ProgramInstance& p = sole_program(
      "INIZIA\nn = \"WWWWWWWWWWWWWWWW\"\nCICLO CONTINUO\n"
      "disegna testo (X: 20, Y: 30, TESTO: \"<n>\", LARGHEZZA CASELLA: 800, INTERLINEA: 30)");
  run_inizia(p);
  run_frame(p);
  std::string written(p.token_text(position(p, "(TESTO:") + 1));
  std::erase(written, '"');
  const std::vector<uint8_t> plain = canvas_pixels();
  EXPECT_EQ(plain, drawn_by([&] { draw_text(20, 30, written); }));

  // Any other key at another value takes the full road, which fills it in.
  clear_canvas();
  ProgramInstance& q = sole_program(
      "INIZIA\nn = \"WWWWWWWWWWWWWWWW\"\nCICLO CONTINUO\n"
      "disegna testo (X: 20, Y: 30, TESTO: \"<n>\", LARGHEZZA CASELLA: 800, INTERLINEA: 20)");
  run_inizia(q);
  run_frame(q);
  EXPECT_GT(ink().width(), string_width(written) + 20);
}

TEST_F(DisegnoTesto, AlignmentsPlaceTheTextAroundItsPointAndAreThenPutBack) {
  run_one_frame("disegna testo (X: 200, Y: 100, TESTO: \"Allineato\", ALLINEAMENTO ORIZZONTALE: a destra)");
  Ink box = ink();
  EXPECT_LT(box.right, 200);
  EXPECT_GT(box.right, 190);
  EXPECT_EQ(text_state().halign, TEXT_ALIGN_START);

  clear_canvas();
  run_one_frame("disegna testo (X: 200, Y: 100, TESTO: \"Allineato\", ALLINEAMENTO ORIZZONTALE: al centro)");
  box = ink();
  EXPECT_LT(box.left, 200);
  EXPECT_GT(box.right, 200);
  EXPECT_LE(std::abs((box.left + box.right) / 2 - 200), 3);

  clear_canvas();
  run_one_frame("disegna testo (X: 200, Y: 100, TESTO: \"Allineato\", ALLINEAMENTO VERTICALE: in basso)");
  box = ink();
  EXPECT_LE(box.bottom, 100);
  EXPECT_GE(box.left, 200);
  EXPECT_EQ(text_state().valign, TEXT_ALIGN_START);

  clear_canvas();
  run_one_frame("disegna testo (X: 200, Y: 100, TESTO: \"Allineato\", ALLINEAMENTO VERTICALE: al centro)");
  box = ink();
  EXPECT_LT(box.top, 100);
  EXPECT_GT(box.bottom, 100);
}

TEST_F(DisegnoTesto, ColourAlphaScaleAndTurn) {
  run_one_frame("disegna testo (X: 20, Y: 20, TESTO: \"MMMM\", COLORE: rosso)");
  const Ink plain = ink();
  const std::vector<uint8_t> red = canvas_pixels();
  bool any_red = false;
  for (size_t k = 0; k + 3 < red.size(); k += 4)
    any_red = any_red || (red[k] > 250 && red[k + 1] < 5 && red[k + 2] < 5);
  EXPECT_TRUE(any_red);
  EXPECT_EQ(draw_state().colour, 0u);
  EXPECT_EQ(draw_state().alpha, 1);

  clear_canvas();
  run_one_frame("disegna testo (X: 20, Y: 20, TESTO: \"MMMM\", TRASPARENZA: 0,5)");
  const std::vector<uint8_t> faint = canvas_pixels();
  int darkest = 255;
  for (size_t k = 0; k + 3 < faint.size(); k += 4) darkest = std::min<int>(darkest, faint[k]);
  EXPECT_GE(darkest, 125);
  EXPECT_LT(darkest, 200);

  clear_canvas();
  run_one_frame("disegna testo (X: 20, Y: 20, TESTO: \"MMMM\", SCALA: 2)");
  const Ink twice = ink();
  EXPECT_NEAR(twice.width(), 2 * plain.width(), 4);
  EXPECT_NEAR(twice.height(), 2 * plain.height(), 4);

  // Turned a quarter counter-clockwise, the text rises from its point.
  clear_canvas();
  run_one_frame("disegna testo (X: 100, Y: 200, TESTO: \"MMMM\", ROTAZIONE: 90)");
  const Ink turned = ink();
  EXPECT_NEAR(turned.height(), plain.width(), 3);
  EXPECT_NEAR(turned.width(), plain.height(), 3);
  EXPECT_LE(turned.bottom, 201);
  EXPECT_LT(turned.top, 200 - plain.width() + 5);
}

TEST_F(DisegnoTesto, BoxWidthWrapsAndLineSeparationSpacesTheLines) {
  run_one_frame("disegna testo (X: 20, Y: 20, TESTO: \"uno due tre\")");
  const Ink one_line = ink();

  clear_canvas();
  run_one_frame("disegna testo (X: 20, Y: 20, TESTO: \"uno due tre\", LARGHEZZA CASELLA: 10)");
  const Ink wrapped = ink();
  EXPECT_LT(wrapped.width(), one_line.width() / 2);
  EXPECT_GE(wrapped.height(), 40 + one_line.height() - 4);

  clear_canvas();
  run_one_frame("disegna testo (X: 20, Y: 20, TESTO: \"uno due tre\", LARGHEZZA CASELLA: 10, INTERLINEA: 50)");
  EXPECT_NEAR(ink().height(), wrapped.height() + 60, 3);

  // A line break written in the text.
  clear_canvas();
  run_one_frame("disegna testo (X: 20, Y: 20, TESTO: \"uno(a capo)due\")");
  EXPECT_GE(ink().height(), 20 + one_line.height() - 4);
}

TEST_F(DisegnoTesto, StileIsAFontFromOttieniStileTestoAndTheEnvironmentFontComesBack) {
  ProgramInstance& p = sole_program(
      "INIZIA\ngrande = ottieni stile testo (CARATTERE: \"DejaVuSans.ttf\", DIMENSIONE: 30)\nCICLO CONTINUO\n"
      "disegna testo (X: 20, Y: 20, TESTO: \"MMMM\", STILE: grande)\n");
  run_inizia(p);
  const auto font = static_cast<int32_t>(number(p, "grande"));
  ASSERT_TRUE(font_exists(font));
  run_frame(p);
  const Ink big = ink();
  EXPECT_EQ(text_state().font, 0);

  // Without STILE the text is in the environment's font, whatever font was set before.
  clear_canvas();
  draw_set_font(font);
  run_one_frame("disegna testo (X: 20, Y: 20, TESTO: \"MMMM\")");
  const Ink usual = ink();
  EXPECT_GT(big.height(), usual.height() + 10);
  EXPECT_EQ(text_state().font, 0);
}

TEST_F(DisegnoTesto, OttieniStileTestoAddsAFontOrGivesTheEnvironmentFont) {
  ProgramInstance& p = run_start(
      "a = ottieni stile testo (CARATTERE: \"DejaVuSans.ttf\", DIMENSIONE: 30, GRASSETTO: 1)\n"
      "b = ottieni stile testo (CARATTERE: \"DejaVuSans.ttf\")\n"
      "c = ottieni stile testo\n"
      "d = ottieni stile testo (CARATTERE: \"Nessun carattere così.ttf\")");
  const auto a = static_cast<int32_t>(number(p, "a")), b = static_cast<int32_t>(number(p, "b"));
  EXPECT_EQ(stored(p, "a"), exact(a));
  ASSERT_NE(font_get(a), nullptr);
  ASSERT_NE(font_get(b), nullptr);
  EXPECT_NE(a, b);  // every call adds a font
  EXPECT_NEAR(font_get(a)->size, 30 * 1.33333333, 0.01);
  EXPECT_TRUE(font_get(a)->bold);
  EXPECT_NEAR(font_get(b)->size, 12 * 1.33333333, 0.01);
  EXPECT_FALSE(font_get(b)->bold);
  EXPECT_EQ(stored(p, "c"), exact(0));
  EXPECT_EQ(stored(p, "d"), exact(0));

  variable_set(global_object(), variable_id("font"), NO_ARRAY_INDEX, RValue::number(4));
  ProgramInstance& q = run_start("e = ottieni stile testo\nf = ottieni stile testo (CARATTERE: \"nessuno\")");
  EXPECT_EQ(stored(q, "e"), exact(4));
  EXPECT_EQ(stored(q, "f"), exact(4));
  for (int32_t added : {a, b}) font_delete(added);
}

}  // namespace
