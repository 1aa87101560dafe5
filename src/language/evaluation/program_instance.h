// The state of an instance that runs a Velant program: main_code_ctrl for
// the program itself, and each esemplare for its own object code.
//
// It owns the token program, the table of variables (two parallel arrays
// of names and value texts, in the order the language gives them) and the
// window settings that the reserved names change. It answers the
// evaluators' questions about names (ExpressionContext): its own table, the
// table of main_code_ctrl, the attributes of its runtime instance, and the
// names the language itself defines.
//
// [SECTION] The variable table        (variables.cpp; lookups in program_instance.cpp)
// [SECTION] Values of names           (names.cpp)
// [SECTION] Conditions                (condition.cpp)
// [SECTION] The statement walk        (statement_walk.cpp, blocks.cpp)
// [SECTION] The instance and its program
#pragma once

#include <algorithm>
#include <climits>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "language/tokenizer/chr_to_ord.h"
#include "language/evaluation/expression_context.h"
#include "language/evaluation/family_call.h"
#include "language/evaluation/plans.h"
#include "language/tokenizer/token_program.h"
#include "runtime/Code/RValue.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Object/Instance.h"

// Hashes names for lookups by std::string_view without making a string.
struct VariableNameHash {
  using is_transparent = void;
  size_t operator()(std::string_view name) const { return std::hash<std::string_view>{}(name); }
};

// The window a program runs in until it sets its own size.
inline constexpr double RUN_WINDOW_WIDTH = 1000, RUN_WINDOW_HEIGHT = 700;

// The base of what a family keeps for one program between its calls.
struct FamilyMemory {
  virtual ~FamilyMemory() = default;
};

class ProgramInstance : public ExpressionContext {
 public:
  // A program run by `instance`; `esemplare` for an element of the program,
  // false for main_code_ctrl.
  ProgramInstance(CInstance& instance, bool esemplare);
  ~ProgramInstance() override;
  ProgramInstance(const ProgramInstance&) = delete;
  ProgramInstance& operator=(const ProgramInstance&) = delete;

  // ---------------------------------------------------------------------------
  // [SECTION] The variable table

  // Makes the table from the tokens, writing from index `first` on: every
  // name assigned anywhere, the last one first assigned standing first; the
  // first values tried once (their errors show now); then "0" for a name
  // with a plain "=", "|not_set|" for one assigned only from a value function.
  void var_inizialization(int first);
  // The assignment `name` = ... at token position `j` (tok[j+1] is "="):
  // the value of tok[j+2], or the negation of tok[j+3] behind "non", into
  // the table; element attributes and reserved names act as well.
  void var_update_direct(std::string_view name, int j);

  // The first position below vari_size that holds `name`, or -1.
  int find_variable(std::string_view name) const;
  // The next position after `after` below vari_size that holds `name`, or -1.
  int next_variable(std::string_view name, int after) const;
  // Writes `name` and `value` at position vari_size and grows vari_size by one.
  void append_variable(std::string_view name, const RValue& value);
  // Takes every entry named `name` out of the table; vari_size goes down by one for each.
  void remove_variable(std::string_view name);
  // How many times the table's names (or vari_size) have changed: a position
  // found for a name holds while this stands.
  uint64_t names_version() const { return names_version_; }
  // The positions of `name` below `limit`, as find_variable and
  // next_variable give them, kept in `cache` while the names stand.
  const std::vector<int>& slots_of(VariableSlots& cache, std::string_view name, int limit) const {
    if (cache.version == names_version_ && cache.limit == limit) return cache.slots;
    return find_slots(cache, name, limit);
  }

  // ---------------------------------------------------------------------------
  // [SECTION] Plans: the shortcuts of the statement walk

  // "aumenta" (sign 1) or "diminuisci" (-1) at `j` on this table by the
  // position's plan; false when the general way must take it.
  bool planned_change(int j, double sign);
  // The assignment at `j` to `name` by the position's plan; false when the general way must take it.
  bool planned_assignment(std::string_view name, int j);
  // The value of expression `text` by `plan` into `out` (and the number the
  // text stands for into `number`, when it is a chain's); false when the
  // general way must work it out.
  // `verified`: the caller's plan has checked that `text` is the token the plan was read from.
  bool planned_value(ExpressionPlan& plan, std::string_view text, std::string& out, double* number = nullptr,
                     bool verified = false);
  // The number of the value of `text`, when the plan knows it is a whole number.
  bool planned_number(ExpressionPlan& plan, std::string_view text, double& number, bool verified = false);

  // ---------------------------------------------------------------------------
  // [SECTION] Values of names

  // The value text of one piece of an expression; "0" for an unknown name.
  std::string cal_var_and_const(std::string_view piece) override;
  // The value text of `name` in the table of main_code_ctrl (this program's
  // own when it runs alone), or "no var".
  std::string calculate_var(std::string_view name) override;
  // The value of `name` in the table of main_code_ctrl as it is stored (a
  // picture of an element may be a number), or the text "no var".
  RValue calculate_var_image(std::string_view name);

  // ---------------------------------------------------------------------------
  // [SECTION] Conditions

  // The truth of the condition behind the "se" or "finche" at position `j`,
  // "1" or "0"; "error" after the message when no "{" closes it.
  std::string tokenizza_boolean(int j);
  // The same by the general reading, token by token, whatever the condition.
  std::string read_condition(int j);
  // The truth of a condition that is a chain of plain comparisons, by its
  // plan, into `truth`; false for any other, which the general reading takes.
  bool plain_condition(int j, int64_t end, std::string& truth);
  // Where the scans of a condition's tokens stop.
  int64_t condition_scan_end() const;
  // The brace of the condition last worked out by its plan, -1 when the general reading took it.
  int condition_brace = -1;

  // The text of token `k`; "" beyond the array or for an entry without text.
  std::string_view token_text(int k) const;
  // Tokens `j` to `j`+10 as an error message shows them, each followed by a blank.
  std::string faulty_tokens(int j) const;

  // ---------------------------------------------------------------------------
  // [SECTION] The statement walk

  // Prepares positions `from` to `to` (not included) to run, once, after
  // var_inizialization: which can start a statement (tok_ok), and which
  // family functions may answer there. The positions' plans are `shared`,
  // the plans of another program of the same tokens, when given.
  void mem_function(int from, int to, std::shared_ptr<PositionPlans> shared = nullptr);
  // Runs positions `from` up to but not including `to`: at each that can
  // start a statement, "aumenta", "diminuisci" and assignment, then every
  // family in order, then the loops and the condition.
  void execute_function_ext(int from, int to);
  // At a "se": lights its block when the condition is true, darkens it when false.
  void execute_if_ext(int j);
  // At "ripeti per N volte": runs the body N - 1 times; the walk that
  // called runs it once more.
  void execute_repeat_ext(int j);
  // At the "finche" of "ripeti finche": runs the body until the condition
  // is false, then marks it done for the walk that called.
  void execute_while_ext(int j);
  // Marks the body of the loop at `j`, up to `end`, as done.
  void deactivate_while(int j, int end);
  // At "debug": shows the value of the next token without its quotes.
  void debug_function(int j);

  // The length of the table when mem_function ran: "aumenta" and
  // "diminuisci" reach the names below it.
  int vlen = 0;
  // The call that a family is serving.
  FamilyCall call;

  // ---------------------------------------------------------------------------
  // [SECTION] The instance and its program

  CInstance& instance;
  const bool esemplare;
  TokenProgram program;

  // The table of variables: names and values at the same index. Names come
  // and go only through the functions above, which keep the lookup index in step.
  std::vector<RValue> vari;
  std::vector<RValue> val;
  int vari_size = 0;
  // Every name seen by var_inizialization, each between vertical bars ("|X||punti|").
  std::string entered_vari;

  // The Draws of the program's instance so far: its block "CICLO_CONTINUO"
  // runs from the second on, and some functions act on odd ones only.
  int64_t time = 0;

  // The pass of the innermost "ripeti" at hand, which a program reads as "ripetizione".
  int ripetizione = 1;
  CharacterCodes codes;

  // The window as the program sets it through the reserved names. On an
  // esemplare they are copies taken from main_code_ctrl.
  double larghezza_finestra = RUN_WINDOW_WIDTH;
  double altezza_finestra = RUN_WINDOW_HEIGHT;
  int griglia_visibile = 1;
  // The room's background colour until the program sets one.
  double colore_sfondo = COLOUR_OLIVE;
  // The caption as the program wrote it, quotes included: what the program reads back as `nome_finestra`.
  std::string room_caption;
  // The caption text without quotes; main_code_ctrl puts it on the window,
  // since the runtime has no built-in that sets the caption yet.
  std::string nome_finestra;

  // What a family keeps for this program between its calls (the pictures
  // it loaded, its surfaces, ...), of the type `T` the family defines and
  // the language never looks into; made at its first use.
  template <class T>
  T& family_memory() {
    static const char key = 0;  // one per type T
    for (auto& [owner, memory] : family_memory_) {
      if (owner == &key) return static_cast<T&>(*memory);
    }
    family_memory_.emplace_back(&key, std::make_unique<T>());
    return static_cast<T&>(*family_memory_.back().second);
  }

  // The timers and the life time of an element as its program set them, in
  // frames; the element counts the timers down.
  double timer[4] = {0, 0, 0, 0};
  double durata = 0;
  // Writes the number of `value` to the element attribute assigned as
  // `name` ("X", "TIMER_1", ...); nothing for other names.
  void write_attribute(std::string_view name, const std::string& value);
  // The index of the element attribute that an assignment to `name` writes, or -1.
  static int written_attribute(std::string_view name);
  // Writes `number` to the element attribute of that index.
  void write_attribute_number(int index, double number);
  // The index of the element attribute `name` ("X", "TIMER_1", ...) that a
  // program reads back, or -1 for other names and for DURATA.
  static int attribute_of(std::string_view name);
  // The element's value of attribute `index`: a field of its instance, or a timer in frames.
  double attribute(int index) const;
  // main_code_ctrl: the ids, as text, of the elements last pressed with the left, right and middle button.
  std::string ultimo_click[3];

 private:
  // The value text of an attribute read name ("|x", "|timer1", ...) of
  // `owner`, whose program is `owner_program` (null if it runs none); false
  // when `name` is no such name.
  static bool attribute_text(std::string_view name, const CInstance& owner, const ProgramInstance* owner_program,
                             std::string& out);
  // The table part of an assignment: every entry of `name` takes the value of the statement at `j`.
  void assign_in_table(ProgramInstance& table, std::string_view name, int j);
  // The truth text ("1" or "0") of the negation of the value of `expression`, as "non" makes it.
  std::string negation_of(std::string_view expression);
  // The reserved names: the window of `target` follows the statement at `j`.
  void assign_reserved(ProgramInstance& target, std::string_view name, int j);
  // The genitive "NOME_del_ELEMENTO": a variable or attribute of another element.
  bool genitive_value(std::string_view s, std::string& out);
  // The names that the language defines: window, chance, keys, mouse, notes, numbers.
  bool language_name_value(std::string_view s, std::string& out);
  // The stored value at position `k` as text.
  std::string value_text(int k) const;
  // The table of main_code_ctrl: that program's, or this one's when it runs alone.
  ProgramInstance& main_table();
  // Reads `plan` from `text` unless it stands as read; false when the general way must take it.
  // Inline: every planned expression asks, and it is mostly ready.
  bool expression_plan_ready(ExpressionPlan& plan, std::string_view text, bool verified) {
    if (!plans_enabled()) return false;
    if (plan.shape == ExpressionPlan::Shape::Unread || (!verified && plan.token != text) ||
        plan.main_version != main_table().names_version()) {
      read_expression_plan(plan, text);
    }
    return plan.shape != ExpressionPlan::Shape::General;
  }
  // Reads `plan` from `text` anew: its shape, operands and signs.
  void read_expression_plan(ExpressionPlan& plan, std::string_view text);
  // Whether, for an element, the main table's string value of `name` is what the general way gives.
  bool main_string_wins(ExpressionPlan& plan, std::string_view name) {
    return &main_table() != this && element_reads_main_string(plan, name);
  }
  bool element_reads_main_string(ExpressionPlan& plan, std::string_view name);
  // The slots of `name` below `limit` in this program's own table, for a
  // plan's name of the reading `reading`, kept at `index` of own_slots
  // (given out now when it has none). The reference dies when the next
  // index is given out.
  const std::vector<int>& own_slots_of(uint32_t& index, uint64_t reading, std::string_view name, int limit) {
    if (index < program.own_slots.size()) {
      const VariableSlots& cache = program.own_slots[index];
      if (cache.reading == reading && cache.version == names_version_ && cache.limit == limit) return cache.slots;
    }
    return find_own_slots(index, reading, name, limit);
  }
  const std::vector<int>& find_own_slots(uint32_t& index, uint64_t reading, std::string_view name, int limit);
  // The stored text of `name`, operand `k` of `plan`, or null when it has none. Inline: each operand asks.
  const RValue* named_value(ExpressionPlan& plan, size_t k, std::string_view name) {
    const std::vector<int>& slots = own_slots_of(plan.own_slots[k], plan.reading, name, INT_MAX);
    if (slots.empty() || static_cast<size_t>(slots[0]) >= val.size()) return nullptr;
    const RValue& value = val[static_cast<size_t>(slots[0])];
    return value.is(Kind::String) ? &value : nullptr;
  }
  // The change of a planned "aumenta" or "diminuisci" on the entries of its name in `table`, writing
  // element attributes through when asked.
  void change_by_plan(StatementPlan& plan, ProgramInstance& table, const std::vector<int>& slots, double sign,
                      bool write_through);
  // The entries that a change reaches: those below the length the table had when the walk was prepared.
  int change_limit() const { return std::min(vlen, static_cast<int>(std::min(vari.size(), val.size()))); }
  // A chain's value, false when a value isn't a whole number or a step leaves the exact range.
  bool chain_number(ExpressionPlan& plan, double& out);

  // "aumenta" (sign 1) or "diminuisci" (sign -1) at `j` on the entries of
  // `table` that a change reaches (change_limit), writing element attributes through when asked.
  void change_variable(ProgramInstance& table, int j, double sign, bool write_through);
  // The position after the last token of the loop body that opens at
  // `start`, braces counted; -1 when they never pair up.
  int loop_body_end(int start) const;
  // Stops the run with the framed message of a loop at `j` without its closing brace.
  void loop_error(int j, std::string_view cause);
  // The end of the block that opens at `from` ("{" plain, or dark when
  // `dark`), braces counted; 0 when it doesn't close.
  int block_end(int from, bool dark) const;
  // Puts `mark` at the front of token `k` unless it holds one already.
  void mark_token(int k, std::string_view mark);
  // Makes token `k` the text `text`, in the string that the programs sharing
  // these plans wrote there before, when one did.
  void write_token(int k, std::string_view text);

  // Makes the lookup index anew from vari.
  void rebuild_index() const;
  // Finds the positions of `name` below `limit` into `cache`.
  const std::vector<int>& find_slots(VariableSlots& cache, std::string_view name, int limit) const;
  // The positions of each name in vari, in ascending order. Mutable: it is
  // made again on demand when vari changed size behind the table's back.
  mutable std::unordered_map<std::string, std::vector<int>, VariableNameHash, std::equal_to<>>
      index_;
  mutable size_t indexed_size_ = 0;
  mutable uint64_t names_version_ = 1;
  std::vector<std::pair<const void*, std::unique_ptr<FamilyMemory>>> family_memory_;
};

namespace program_instance_detail {
inline ProgramInstance* main = nullptr;  // set through set_main_program
}
// The program of main_code_ctrl, or null when no program runs.
inline ProgramInstance* main_program() { return program_instance_detail::main; }
inline ProgramInstance& ProgramInstance::main_table() {
  ProgramInstance* main = main_program();
  return main ? *main : *this;
}
// Names the program of main_code_ctrl (null when the run ends).
void set_main_program(ProgramInstance* program);
// The program run by the instance with this id, or null.
ProgramInstance* program_of_instance(int32_t id);
// Whether any esemplare exists: the genitive of names only looks for owners then.
bool esemplare_exists();
