#include <random>
#include <set>
#include <tuple>

#include "language/evaluation/numeric_expression.h"
#include "runtime/Function/Random.h"
#include "support/program_fixture.h"

namespace {

using Texts = std::vector<std::string>;

class VariableTable : public ProgramTest {
 protected:
  // The names (p.vari) or the values (p.val) of `p`'s table below vari_size, in their order.
  static Texts column(const ProgramInstance& p, const std::vector<RValue>& cells) {
    Texts out;
    for (int k = 0; k < p.vari_size; ++k) out.emplace_back(cells[static_cast<size_t>(k)].string_view());
    return out;
  }
  // What `p` reads for each name, checked against the expected texts.
  static void expect_reads(ProgramInstance& p, const std::vector<std::pair<std::string, std::string>>& reads) {
    for (const auto& [name, value] : reads) EXPECT_EQ(p.cal_var_and_const(name), value) << name;
  }
  // Runs the plain assignments between positions `from` and `to`.
  static void run_between(ProgramInstance& p, int from, int to) {
    for (int k = from; k + 1 < to; ++k) {
      if (p.token_text(k + 1) == "=") p.var_update_direct(p.token_text(k), k);
    }
  }
};

}  // namespace

TEST_F(VariableTable, TablesStandInReverseOrderOfFirstAssignmentAndElementsReachTheProgramsOwn) {
  ProgramInstance& p = program(
      "INIZIA\nA = 1\nB = ottieni il seno di (VALORE: 30)\nA = 3\nS = \"ciao\"\n"
      "CICLO CONTINUO\nX = A + 2\nB = 4\nD = ottieni il seno di (VALORE: 0)\n");
  EXPECT_EQ(column(p, p.vari), (Texts{"D", "X", "S", "B", "A", "nome_finestra", "larghezza_finestra",
                                      "altezza_finestra", "colore_sfondo"}));
  // Any plain assignment starts the variable at "0"; one only from a value function is not set yet.
  EXPECT_EQ(column(p, p.val), (Texts{"|not_set|", "0", "0", "0", "0", "0", "0", "0", "0"}));
  EXPECT_EQ(p.entered_vari, "|colore_sfondo||altezza_finestra||larghezza_finestra||nome_finestra||A||B||S||X||D|");

  // An element's table goes on behind the entries it was given, without the
  // names it has or the program has already.
  ProgramInstance& e = bare_program(true);
  e.append_variable("", RValue::text(""));
  e.append_variable("vite", RValue::text("3"));
  e.entered_vari = "|vite|";
  tokenise(e, "INIZIA\nvite = 5\nA = A + 2\nX = 50\nY = 2\nZ = 1\nlarghezza finestra = 640\n");
  e.var_inizialization(2);
  EXPECT_EQ(column(e, e.vari), (Texts{"", "vite", "Z", "Y"}));
  EXPECT_EQ(column(e, e.val), (Texts{"", "3", "0", "0"}));
  EXPECT_EQ(e.entered_vari, "|vite||Y||Z|");
  // Its assignments reach the program's names and window, but an attribute
  // moves the element, not main_code_ctrl.
  run_assignments(e);
  EXPECT_EQ(stored(p, {"A", "X", "vite"}), (Texts{"2", "50", "absent"}));
  EXPECT_EQ(stored(e, {"vite"}), (Texts{"5"}));
  EXPECT_EQ(e.instance.x, 50);
  EXPECT_EQ(p.instance.x, 0);
  EXPECT_EQ(p.larghezza_finestra, 640);
  EXPECT_EQ(e.larghezza_finestra, 640);
}

TEST_F(VariableTable, AssignmentsStoreValuesOrTheirNegationAndNamesReadValuesSignsAndConstants) {
  ProgramInstance& p = program(
      "INIZIA\nY = X + 1\nA = 2+3*4\nB = non A\nC = non 0\nD = \"ciao mondo\"\nE = non 0.4\nF = non 0.6\nG = A\n"
      "Q = 5gatti + 1\nM = un mezzo + mezza\nN = mezza\nO = Pi greco * 2\nCICLO CONTINUO\nX = 5\n");
  // X is assigned only in CICLO_CONTINUO: read in INIZIA, it is the table's start value.
  EXPECT_EQ(p.cal_var_and_const("X"), "0");
  run_between(p, 0, p.program.DISEGNA);
  // A name that begins with a digit is a number text; a product left alone keeps its ten decimals.
  EXPECT_EQ(stored(p, {"Y", "A", "B", "C", "D", "E", "F", "G", "Q", "M", "N", "O"}),
            (Texts{"1", "14", "0", "1", "\"ciao mondo\"", "1", "0", "14", "6", "0.5", "0.5", "6.2831853070"}));
  // Numbers, signs and values that are no name stand for themselves.
  for (const char* own : {"5gatti", " 3", "-0.5", "+", "-", "*", "/", "^", "|not_set|"}) {
    EXPECT_EQ(p.cal_var_and_const(own), own);
  }
  // Colours are numbers only as whole tokens, and so are "mezza" and "mezzo";
  // attributes are read only on an element.
  expect_reads(p, {{"sconosciuto", "0"}, {"-X", "0"}, {"rosso", "0"}, {"|x", "0"}, {"se_stesso", "0"}, {"vero", "1"},
                   {"intera", "1"}, {"nullo", "0"}, {"Do", "1"}, {"Si_bemolle", "1.778625954198473"},
                   {"Pi_greco", "3.1415926535"}, {"mezza", "0"}, {"mezzo", "0"}});
  run_between(p, p.program.DISEGNA, p.program.totale_tok);
  EXPECT_EQ(calculate_string(p, "X*2"), "10.0000000000");
  EXPECT_EQ(p.calculate_var("Z"), "no var");
  // A name that isn't in the table is left alone.
  p.var_update_direct("nuovo", position(p, "A"));
  EXPECT_EQ(p.find_variable("nuovo"), -1);
  // A picture keeps the value stored, a number; read as text it is the number's.
  p.val[static_cast<size_t>(p.find_variable("X"))] = RValue::number(3);
  EXPECT_TRUE(p.calculate_var_image("X").is(Kind::Number));
  EXPECT_EQ(p.calculate_var_image("X").real, 3);
  EXPECT_EQ(p.calculate_var("X"), "3");
  EXPECT_EQ(p.calculate_var_image("nessuna").string_view(), "no var");
  EXPECT_TRUE(messages_.empty());
}

TEST_F(VariableTable, AttributesWriteThroughToTheInstance) {
  ProgramInstance& p = program(
      "INIZIA\nX = 120\nY = 40\nDIREZIONE = 90\nVELOCITA = 3\nTRASPARENZA = 0.5\nROTAZIONE = 45\n"
      "SCALA ASSE X = 2\nSCALA ASSE Y = 3\nVELOCITA ANIMAZIONE = 0.25\nFOTOGRAMMA = 2\nCOLORE = rosso\n"
      "TIMER 1 = 2\nTIMER 4 = 0.5\nDURATA = 1.5\n");
  run_assignments(p);
  const CInstance& i = p.instance;
  const std::pair<float, float> fields[] = {
      {i.x, 120}, {i.y, 40}, {i.direction, 90}, {i.speed, 3}, {i.image_alpha, 0.5f}, {i.image_angle, 45},
      {i.image_xscale, 2}, {i.image_yscale, 3}, {i.image_speed, 0.25f}, {i.image_index, 2}};
  for (size_t k = 0; k < std::size(fields); ++k) EXPECT_EQ(fields[k].first, fields[k].second) << "field " << k;
  EXPECT_EQ(i.image_blend, 255);
  // Speed and direction give the motion's other side.
  EXPECT_NEAR(i.hspeed, 0, 1e-5);
  EXPECT_NEAR(i.vspeed, -3, 1e-5);
  // Seconds become frames.
  EXPECT_EQ((std::vector<double>{p.timer[0], p.timer[1], p.timer[3], p.durata}), (std::vector<double>{60, 0, 15, 45}));
}

TEST_F(VariableTable, ReservedNamesSetTheWindow) {
  ProgramInstance& p = program(
      "INIZIA\nlarghezza finestra = 500\naltezza finestra = 200+50\ncolore sfondo = -1\n"
      "nome finestra = \"Il mio gioco\"\nCICLO CONTINUO\ncolore sfondo = verde\n");
  EXPECT_EQ(p.larghezza_finestra, 1000);
  run_between(p, 0, p.program.DISEGNA);
  EXPECT_EQ(p.larghezza_finestra, 500);
  EXPECT_EQ(p.altezza_finestra, 250);
  // "-1" leaves the colour and the grid as they are.
  EXPECT_EQ(p.colore_sfondo, 32896);
  EXPECT_EQ(p.griglia_visibile, 1);
  EXPECT_EQ(p.room_caption, "\"Il mio gioco\"");
  EXPECT_EQ(p.nome_finestra, "Il mio gioco");
  run_between(p, p.program.DISEGNA, p.program.totale_tok);
  EXPECT_EQ(p.colore_sfondo, 65280);
  EXPECT_EQ(p.griglia_visibile, 0);
  // The table answers first: the program assigned these names.
  expect_reads(p, {{"larghezza_finestra", "500"}, {"nome_finestra", "\"Il mio gioco\""}});

  // Without them, the names read the room and the main program's window.
  forget_programs();
  ProgramInstance& main = bare_program();
  main.colore_sfondo = 255;
  main.room_caption = "\"Titolo\"";
  ProgramInstance& other = bare_program();
  other.ripetizione = 7;
  expect_reads(other, {{"larghezza_finestra", std::to_string(ROOM_WIDTH)}, {"altezza_finestra", std::to_string(ROOM_HEIGHT)},
                       {"colore_sfondo", "255"}, {"nome_finestra", "\"Titolo\""}, {"ripetizione", "7"}});
  EXPECT_EQ(main.cal_var_and_const("ripetizione"), "1");
}

TEST_F(VariableTable, KeysAndMouseReadTheFrameInput) {
  ProgramInstance& p = bare_program();
  input_key_event(KEY_LETTER_A, true);
  input_key_event(KEY_UP, true);
  input_key_event(KEY_DIGIT_0 + 7, true);
  input_mouse_button_event(MOUSE_RIGHT, true);
  input_mouse_move(30, 45);
  input_wheel(1);
  input_begin_frame();
  // Letters are named by their capitals only.
  expect_reads(p, {{"tasto_A_e_premuto", "1"}, {"tasto_a_e_premuto", "0"}, {"tasto_A_e_stato_rilasciato", "0"},
                   {"tasto_freccia_su_e_premuto", "1"}, {"tasto_7_e_premuto", "1"}, {"tasto_invio_e_premuto", "0"},
                   {"tasto_destro_del_mouse_e_premuto", "1"}, {"tasto_destro_del_mouse_e_stato_premuto", "1"},
                   {"tasto_sinistro_del_mouse_e_premuto", "0"}, {"x_del_mouse", "30"}, {"y_del_mouse", "45"},
                   {"rotella_del_mouse_in_su", "1"}, {"rotella_del_mouse_in_giu", "0"}});
  input_key_event(KEY_ENTER, true);
  input_key_event(KEY_LETTER_A, false);
  input_mouse_button_event(MOUSE_RIGHT, false);
  input_begin_frame();
  // The arrow is still held, but with no new press.
  expect_reads(p, {{"tasto_invio_e_stato_premuto", "1"}, {"tasto_A_e_premuto", "0"},
                   {"tasto_A_e_stato_rilasciato", "1"}, {"tasto_freccia_su_e_premuto", "1"},
                   {"tasto_freccia_su_e_stato_premuto", "0"}, {"tasto_destro_del_mouse_e_stato_rilasciato", "1"},
                   {"rotella_del_mouse_in_su", "0"}});
}

TEST_F(VariableTable, RandomNamesDrawWithinTheRoom) {
  ProgramInstance& p = bare_program();
  // Each name draws from 0 up to its bound, and reaches past the next smaller bound.
  const std::tuple<const char*, double, double> draws[] = {
      {"x_casuale", ROOM_WIDTH, ROOM_HEIGHT}, {"y_casuale", ROOM_HEIGHT, 360}, {"angolo_casuale", 360, 300}};
  for (const auto& [name, bound, reached] : draws) {
    double largest = 0;
    for (int k = 0; k < 400; ++k) {
      const double value = string_is_real(p.cal_var_and_const(name));
      ASSERT_TRUE(value >= 0 && value < bound) << name << " " << value;
      largest = std::max(largest, value);
    }
    EXPECT_GT(largest, reached) << name;
  }
  std::set<std::string> drawn_colours;
  for (int k = 0; k < 400; ++k) drawn_colours.insert(p.cal_var_and_const("colore_casuale"));
  EXPECT_EQ(drawn_colours, (std::set<std::string>{"255", "16776960", "65535", "4235519", "16711680", "16777215",
                                                  "32768", "65280", "8388736"}));
  // The runtime's generator draws them: the same seed gives the same values.
  rt::random_set_seed(42);
  const std::string first = p.cal_var_and_const("x_casuale");
  rt::random_set_seed(42);
  EXPECT_EQ(p.cal_var_and_const("x_casuale"), first);
}

TEST_F(VariableTable, ElementsReadTheirOwnAttributesAndOthersThroughTheGenitive) {
  ProgramInstance& main = program("INIZIA\ngatto = 0\npunti = 10\n");
  run_assignments(main);
  ProgramInstance& gatto = bare_program(true);
  CInstance& g = gatto.instance;
  g.x = 12.5f;
  g.y = 40;
  g.depth = -3;
  g.image_alpha = 0.25f;
  g.alarm[5] = 90;
  gatto.timer[0] = 60;
  const std::string id = std::to_string(g.id);
  main.val[static_cast<size_t>(main.find_variable("gatto"))] = RValue::text(id);
  gatto.append_variable("", RValue::text(""));
  gatto.append_variable("vite", RValue::text("3"));
  gatto.append_variable("punti", RValue::text("4"));
  // An element's own attributes; its own entry wins over the program-wide
  // one; the rest is the program's.
  expect_reads(gatto, {{"|x", "12.50"}, {"|y", "40"}, {"|z", "-3"}, {"|trasparenza", "0.25"}, {"|timer1", "2"},
                       {"|timer2", "0"}, {"|durata", "3"}, {"se_stesso", id}, {"punti", "4"}, {"gatto", id}});
  EXPECT_EQ(gatto.calculate_var("punti"), "10");
  // The genitive, from anywhere, with the expression's brackets kept; an
  // owner that is no instance, or a name the owner hasn't, is unknown; mouse
  // names are no genitive.
  input_mouse_move(7, 9);
  input_begin_frame();
  expect_reads(main, {{"punti", "10"}, {"|x_del_gatto", "12.50"}, {"vite_del_gatto", "3"}, {"[vite_del_gatto]", "[3]"},
                      {"[[|y_del_gatto", "[[40"}, {"vite_del_cane", "0"}, {"fame_del_gatto", "0"},
                      {"x_del_mouse", "7"}});
  EXPECT_EQ(calculate_string(main, "vite_del_gatto*2+|x_del_gatto"), "18.5");

  // Without any element there is no genitive at all.
  programs_.erase(programs_.begin() + 1);
  EXPECT_FALSE(esemplare_exists());
  EXPECT_EQ(main.cal_var_and_const("vite_del_gatto"), "0");
}

TEST_F(VariableTable, LookupsAgreeWithAScanFromTheStart) {
  ProgramInstance& p = bare_program();
  const Texts pool = {"a", "b", "c", "d", "", "gatto"};
  std::mt19937 random(7);
  const auto pick = [&] { return pool[random() % pool.size()]; };
  const auto scan = [&](const std::string& name) {
    for (int k = 0; k < std::min(p.vari_size, static_cast<int>(p.vari.size())); ++k) {
      if (p.vari[static_cast<size_t>(k)].string_view() == name) return k;
    }
    return -1;
  };
  for (int step = 0; step < 3000; ++step) {
    switch (random() % 5) {
      case 0:
      case 1: p.append_variable(pick(), RValue::text(std::to_string(step))); break;
      case 2: p.remove_variable(pick()); break;
      // The table's size runs behind its arrays for a while, as it does while a table is made.
      case 3: p.vari_size = static_cast<int>(random() % (p.vari.size() + 1)); break;
      case 4: p.vari_size = static_cast<int>(p.vari.size()); break;
    }
    for (const std::string& name : pool) ASSERT_EQ(p.find_variable(name), scan(name)) << name << " at " << step;
  }
}

TEST_F(VariableTable, FirstValuesAreTriedAtTheStart) {
  // The statement would never run, yet its expression's error shows at once.
  ProgramInstance& p = program(
      "INIZIA\nS = \"1++2\"\nCICLO CONTINUO\nse 0 allora\nX = 1++2\n}\nY = ottieni il seno di (VALORE: 1++2)\n");
  ASSERT_EQ(messages_.size(), 1u);
  EXPECT_TRUE(messages_[0].starts_with("Errore nell'espressione:\r\n")) << messages_[0];
  EXPECT_NE(messages_[0].find("\r\n1++2\r\n"), std::string::npos) << messages_[0];
  EXPECT_EQ(stored(p, {"X", "S", "Y"}), (Texts{"0", "0", "|not_set|"}));
}
