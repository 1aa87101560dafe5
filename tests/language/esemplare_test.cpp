// Elements frame by frame: the start a frame after Create with the head of
// their program, the object's code run each Draw, the runtime's motion shown
// in their variables, tokens made once for a class, the life time, the name
// in the program's table and out of it, the "0.5" of one frame after the
// mouse has left.
#include "language/elements/element_templates.h"
#include "language/elements/esemplare.h"
#include "language/evaluation/numeric_expression.h"
#include "support/program_fixture.h"

namespace {

class Elements : public ProgramTest {
 protected:
  void SetUp() override {
    ProgramTest::SetUp();
    define_element_objects([] { return -1; });
    objects_prepare();
  }
  // The program of main_code_ctrl, with object code for the class "palla".
  ProgramInstance& with_code(const std::string& code) {
    return runnable("INIZIA\npalla esegue al suo interno questo codice\n{\n" + code + "\n}\nCICLO CONTINUO\n");
  }
  static Esemplare& element(const std::string& ogg, const std::string& nome, float x = 0, float y = 0) {
    auto* e = static_cast<Esemplare*>(instance_create(x, y, object_find("esemplare"), 0));
    e->ogg = ogg;
    e->nome = nome;
    return *e;
  }
};

TEST_F(Elements, AnElementWithoutCodeHasItsAttributesInItsTableFromTheStart) {
  ProgramInstance& main = with_code("X = 1");
  Esemplare& e = element("sasso", "sasso1", 100, 50);
  e.durata = "0";
  frames(1);
  EXPECT_EQ(e.code_index, Esemplare::NO_CODE);
  EXPECT_EQ(stored(e.program(), "X"), "100");
  EXPECT_EQ(stored(e.program(), "Y"), "50");
  EXPECT_EQ(stored(e.program(), "NOME"), "0") << "the bare name reads as an unknown name";
  EXPECT_EQ(stored(main, "sasso1"), std::to_string(e.id)) << "the program's table names it by its id";
  frames(3);
  EXPECT_EQ(e.x, 100) << "it runs nothing";
}

TEST_F(Elements, ObjectCodeMovesTheElementAndSeesTheRuntimesMotion) {
  ProgramInstance& main = with_code("X = 300\nvisto = Y");
  Esemplare& still = element("palla", "p1", 10, 10);
  Esemplare& moving = element("palla", "p2", 10, 10);
  frames(3);
  EXPECT_EQ(still.x, 300) << "an assignment to X moves the element";
  moving.vspeed = 2;
  frames(2);
  EXPECT_EQ(stored(moving.program(), "Y"), std::to_string(static_cast<int>(moving.y))) << "Y shows the motion";
  EXPECT_EQ(string_is_real(stored(moving.program(), "visto")), moving.y) << "the code reads the moved Y";
  EXPECT_EQ(calculate_string(main, "visto_del_p2"), stored(moving.program(), "visto")) << "read from outside";
}

TEST_F(Elements, TheElementsOfAClassShareTokensMadeOnce) {
  ProgramInstance& main = with_code("X = X + 1");
  Esemplare& first = element("palla", "p1");
  frames(1);
  ASSERT_FALSE(main.program.tok_ogg[1].empty());
  main.program.contenuto_ogg[1] = "Y = 999";  // a second making would show
  Esemplare& second = element("palla", "p2");
  frames(1);
  const auto code_of = [](Esemplare& e) {
    const std::vector<RValue>& tok = e.program().program.tok;
    return std::vector<std::string>{std::string(tok[tok.size() - 3].string_view()), std::string(tok.back().string_view())};
  };
  EXPECT_EQ(code_of(second), code_of(first));
  EXPECT_EQ(code_of(first), (std::vector<std::string>{"X", "X+1"}));
}

TEST_F(Elements, ALifeTimeOfTwoSecondsEndsAtFrameSixty) {
  ProgramInstance& main = with_code("X = 1");
  Esemplare& e = element("palla", "p1");
  e.durata = "2";
  const int32_t id = e.id;
  frames(59);
  ASSERT_NE(instance_find(id), nullptr);
  frames(1);
  EXPECT_EQ(instance_find(id), nullptr);
  EXPECT_EQ(main.find_variable("p1"), -1);
  EXPECT_EQ(calculate_string(main, "p1"), "0") << "a destroyed element's name reads 0";
}

TEST_F(Elements, TheMouseLeavingReadsHalfForOneFrame) {
  with_code("X = 1");
  Esemplare& e = element("palla", "p1");
  frames(2);
  e.mouse_enter();
  EXPECT_EQ(e.enter, "1");
  e.mouse_leave();
  EXPECT_EQ(e.enter, "0.5");
  frames(1);
  EXPECT_EQ(e.enter, "0");
}

}  // namespace
