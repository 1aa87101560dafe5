// Drawing a frame of 10,000 sprites and 10,000 shapes headless, on Mesa's
// software renderer: frames a second and draw calls a frame.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "runtime/Code/Builtins.h"
#include "runtime/Graphics/Batch.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/ImageFile.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/Graphics/SpriteDrawing.h"
#include "runtime/IO/FileNames.h"
#include "runtime/Graphics/Surfaces.h"
#include "runtime/Platform/Gpu.h"
#include "runtime/Platform/Window.h"

namespace {

// A 16 x 16 sprite of a soft disc.
int32_t disc_sprite() {
  Image image{16, 16, std::vector<uint8_t>(16 * 16 * 4)};
  for (int y = 0; y < 16; ++y) {
    for (int x = 0; x < 16; ++x) {
      uint8_t* p = &image.rgba[static_cast<size_t>((y * 16 + x) * 4)];
      const int d = (x - 8) * (x - 8) + (y - 8) * (y - 8);
      p[0] = 255;
      p[1] = static_cast<uint8_t>(x * 16);
      p[2] = static_cast<uint8_t>(y * 16);
      p[3] = d < 64 ? 255 : 0;
    }
  }
  // The temporary folder is where the program's files are, as the save area would be.
  const std::string folder = std::filesystem::temp_directory_path().string();
  file_folders_set({folder, folder, ""});
  const std::string file = folder + "/velant_bench_disc.png";
  image_save_png(file, image);
  const int32_t sprite = sprite_add(file, 1, false, false, 8, 8);
  std::filesystem::remove(file);
  return sprite;
}

void BM_draw_10000_sprites_and_10000_shapes(benchmark::State& state) {
  register_runtime_builtins();
  platform::Window& window = platform::make_window(true);
  if (!window.create(800, 600, "bench", {}) || !platform::gpu().ready()) {
    return state.SkipWithError("no OpenGL context");
  }
  const int32_t sprite = disc_sprite();
  const int32_t frame = surface_create(800, 600);
  uint64_t calls = 0;
  for (auto _ : state) {
    platform::gpu().reset_draw_calls();
    surface_set_target(frame);
    draw_clear_alpha(0, 1);
    for (int k = 0; k < 10000; ++k) {
      draw_sprite_ext(sprite, 0, (k * 37) % 800, (k * 53) % 600, 1, 1, k % 360, 0xFFFFFF, 1);
    }
    for (int k = 0; k < 10000; ++k) {
      draw_state().colour = static_cast<uint32_t>(k * 2654435761u) & 0xFFFFFF;
      const double x = (k * 41) % 800, y = (k * 29) % 600;
      if (k % 2) draw_rectangle(x, y, x + 6, y + 4, false);
      else draw_circle(x, y, 3, false);
    }
    surface_reset_target();
    batch_flush();
    calls = platform::gpu().draw_calls();
    // Reading a pixel waits until the device has drawn the frame.
    benchmark::DoNotOptimize(surface_getpixel(frame, 1, 1));
  }
  state.counters["draw_calls_per_frame"] = static_cast<double>(calls);
  state.counters["frames_per_second"] =
      benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}
// Real time: the device draws on threads of its own.
BENCHMARK(BM_draw_10000_sprites_and_10000_shapes)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
