#include "language/evaluation/program_instance.h"

#include <algorithm>

#include "runtime/Code/Conversions.h"

namespace {

// The programs that run, by the id of their instance. The genitive of names
// reaches another element's table through this.
std::unordered_map<int32_t, ProgramInstance*>& programs_by_instance() {
  static std::unordered_map<int32_t, ProgramInstance*> programs;
  return programs;
}

int g_esemplari = 0;

}  // namespace

ProgramInstance::ProgramInstance(CInstance& instance, bool esemplare) : instance(instance), esemplare(esemplare) {
  chr_to_ord(codes);
  programs_by_instance()[instance.id] = this;
  if (esemplare) ++g_esemplari;
}

ProgramInstance::~ProgramInstance() {
  auto& programs = programs_by_instance();
  if (auto it = programs.find(instance.id); it != programs.end() && it->second == this) programs.erase(it);
  if (esemplare) --g_esemplari;
  if (main_program() == this) set_main_program(nullptr);
}

void set_main_program(ProgramInstance* program) { program_instance_detail::main = program; }

ProgramInstance* program_of_instance(int32_t id) {
  auto& programs = programs_by_instance();
  auto it = programs.find(id);
  return it == programs.end() ? nullptr : it->second;
}

bool esemplare_exists() { return g_esemplari > 0; }

std::string_view ProgramInstance::token_text(int k) const {
  if (k < 0 || static_cast<size_t>(k) >= program.tok.size()) return {};
  const RValue& token = program.tok[static_cast<size_t>(k)];
  return token.is(Kind::String) ? token.string_view() : std::string_view();
}

std::string ProgramInstance::faulty_tokens(int j) const {
  std::string faulty;
  for (int64_t k = j; k <= int64_t{j} + 10 && k < static_cast<int64_t>(program.tok.size()); ++k) {
    faulty.append(token_text(static_cast<int>(k))).append(" ");
  }
  return faulty;
}

std::string ProgramInstance::value_text(int k) const {
  // A value array that fell behind its names reads as empty values.
  if (static_cast<size_t>(k) >= val.size()) return {};
  const RValue& value = val[static_cast<size_t>(k)];
  return value.is(Kind::String) ? std::string(value.string_view()) : value_to_text(value);
}


// ---------------------------------------------------------------------------
// The lookup index. Every name of every expression is looked up, in every
// frame, so a name costs one hash lookup instead of a walk over the table.
// The index keeps all positions of a name, so that the first one is the
// answer of a walk from the start, and an assignment reaches them all.

void ProgramInstance::rebuild_index() const {
  ++names_version_;
  index_.clear();
  for (size_t k = 0; k < vari.size(); ++k) {
    if (vari[k].is(Kind::String)) index_[std::string(vari[k].string_view())].push_back(static_cast<int>(k));
  }
  indexed_size_ = vari.size();
}

int ProgramInstance::find_variable(std::string_view name) const {
  if (indexed_size_ != vari.size()) rebuild_index();
  auto it = index_.find(name);
  if (it == index_.end()) return -1;
  int first = it->second.front();
  // A name overwritten in place: the index is made again.
  if (vari[static_cast<size_t>(first)].string_view() != name) {
    rebuild_index();
    it = index_.find(name);
    if (it == index_.end()) return -1;
    first = it->second.front();
  }
  return first < std::min(vari_size, static_cast<int>(vari.size())) ? first : -1;
}

int ProgramInstance::next_variable(std::string_view name, int after) const {
  if (find_variable(name) < 0) return -1;
  const std::vector<int>& positions = index_.find(name)->second;
  auto next = std::upper_bound(positions.begin(), positions.end(), after);
  return next != positions.end() && *next < std::min(vari_size, static_cast<int>(vari.size())) ? *next : -1;
}

void ProgramInstance::append_variable(std::string_view name, const RValue& value) {
  const auto at = static_cast<size_t>(std::max(vari_size, 0));
  if (at < vari.size()) {
    // A table that ran ahead of vari_size has its slot taken over.
    vari[at] = RValue::text(name);
    if (val.size() <= at) val.resize(at + 1);
    val[at] = value;
    rebuild_index();
  } else {
    if (indexed_size_ != vari.size()) rebuild_index();
    vari.resize(at);
    val.resize(at);
    vari.push_back(RValue::text(name));
    val.push_back(value);
    index_[std::string(name)].push_back(static_cast<int>(at));
    indexed_size_ = vari.size();
  }
  ++vari_size;
  ++names_version_;
}

void ProgramInstance::remove_variable(std::string_view name) {
  if (val.size() < vari.size()) val.resize(vari.size());
  for (size_t k = vari.size(); k-- > 0;) {
    if (!vari[k].is(Kind::String) || vari[k].string_view() != name) continue;
    vari.erase(vari.begin() + static_cast<std::ptrdiff_t>(k));
    val.erase(val.begin() + static_cast<std::ptrdiff_t>(k));
    vari_size = std::max(vari_size - 1, 0);
  }
  rebuild_index();
}
