// The graphics device on OpenGL 3.3 core: a shader that multiplies the
// vertex colour by a texture, a cheaper one for shapes without a texture, one
// vertex buffer filled anew for each draw, and a framebuffer per render target.
//
// Render targets keep their first row at the top of the picture, as images
// loaded from files do, so that both are sampled alike; the window's rows run
// the other way, which the transform and the read-back turn round.
#include <SDL.h>

#include <algorithm>
#include <unordered_map>
#include <vector>

#include "runtime/Platform/Log.h"
#include "runtime/Platform/Gpu.h"
#include "runtime/Platform/Window.h"
#include "runtime/Platform/gl/GlFunctions.h"

namespace platform {
namespace {

constexpr const char* VERTEX_SHADER = R"(#version 330 core
layout(location = 0) in vec3 position;
layout(location = 1) in vec4 colour;
layout(location = 2) in vec2 uv;
uniform mat4 transform;
out vec4 v_colour;
out vec2 v_uv;
void main() {
  gl_Position = transform * vec4(position, 1.0);
  v_colour = colour;
  v_uv = uv;
}
)";

constexpr const char* FRAGMENT_SHADER = R"(#version 330 core
in vec4 v_colour;
in vec2 v_uv;
uniform sampler2D image;
out vec4 colour;
void main() { colour = texture(image, v_uv) * v_colour; }
)";

// Selected text: where the mask is set, the texture's shape in the text
// colour over the background colour; elsewhere the texture as it is.
constexpr const char* SELECTION_FRAGMENT_SHADER = R"(#version 330 core
in vec4 v_colour;
in vec2 v_uv;
uniform sampler2D image;
uniform sampler2D mask;
uniform vec4 text_colour;
uniform vec4 background;
out vec4 colour;
void main() {
  vec4 c = texture(image, v_uv) * v_colour;
  if (texture(mask, v_uv).a < 0.5) {
    colour = c;
    return;
  }
  float t = text_colour.a * c.a;
  float a = t + background.a * (1.0 - t);
  vec3 rgb = a > 0.0 ? (text_colour.rgb * t + background.rgb * background.a * (1.0 - t)) / a : vec3(0.0);
  colour = vec4(rgb, a);
}
)";

// Shapes without a texture: the colour alone, with no texture to sample;
// or a regular polygon in its quad, worked out for each pixel: the edge of
// the polygon's sector that the pixel lies in decides whether it is inside,
// and the distance towards that edge mixes the centre's colour with the
// edge's, as across a triangle of the polygon's fan.
constexpr const char* PLAIN_VERTEX_SHADER = R"(#version 330 core
layout(location = 0) in vec3 position;
layout(location = 1) in vec4 colour;
layout(location = 2) in vec2 place;
layout(location = 3) in vec4 centre_colour;
layout(location = 4) in float sides;
uniform mat4 transform;
out vec4 v_colour;
out vec2 v_place;
flat out vec4 v_centre_colour;
flat out float v_sides;
void main() {
  gl_Position = transform * vec4(position, 1.0);
  v_colour = colour;
  v_place = place;
  v_centre_colour = centre_colour;
  v_sides = sides;
}
)";

constexpr const char* PLAIN_FRAGMENT_SHADER = R"(#version 330 core
in vec4 v_colour;
in vec2 v_place;
flat in vec4 v_centre_colour;
flat in float v_sides;
out vec4 colour;
const float TURN = 6.28318530717958647692;
void main() {
  if (v_sides < 0.5) {
    colour = v_colour;
    return;
  }
  float sector = TURN / v_sides;
  float k = floor(mod(atan(v_place.y, v_place.x), TURN) / sector);
  float middle = (k + 0.5) * sector;
  float reach = dot(v_place, vec2(cos(middle), sin(middle))) / cos(sector * 0.5);
  if (reach > 1.0) discard;
  colour = mix(v_centre_colour, v_colour, reach);
}
)";

// Blend factors by the runtime's numbers, from 1.
constexpr GLenum BLEND_FACTORS[] = {
    GL_ZERO,
    GL_ONE,
    GL_SRC_COLOR,
    GL_ONE_MINUS_SRC_COLOR,
    GL_SRC_ALPHA,
    GL_ONE_MINUS_SRC_ALPHA,
    GL_DST_ALPHA,
    GL_ONE_MINUS_DST_ALPHA,
    GL_DST_COLOR,
    GL_ONE_MINUS_DST_COLOR,
    GL_SRC_ALPHA_SATURATE,
};

GLenum blend_factor(int number) {
  return number >= 1 && number <= static_cast<int>(std::size(BLEND_FACTORS)) ? BLEND_FACTORS[number - 1] : GL_ONE;
}

struct TextureRecord {
  GLuint name = 0;
  GLuint framebuffer = 0;  // for render targets
  int width = 0;
  int height = 0;
  TextureFormat format = TextureFormat::Rgba8;
};

class GlGpu final : public Gpu {
 public:
  bool ready() override {
    const Window* w = window_if_made();
    if (!w || !w->gl_context_ready()) return false;
    SDL_GLContext context = SDL_GL_GetCurrentContext();
    if (context == context_ && usable_) return true;
    if (context == context_) return false;  // this context failed once already
    context_ = context;
    ++generation_;
    textures_.clear();
    usable_ = gl::load_functions(f_) && make_pipeline();
    if (!usable_) log("Graphics: the OpenGL context lacks what drawing needs; nothing will be drawn\n");
    return usable_;
  }

  uint64_t generation() const override { return generation_; }

  TextureId create_texture(int width, int height, TextureFormat format, std::span<const uint8_t> pixels,
                           bool render_target) override {
    if (!ready() || width < 1 || height < 1) return 0;
    TextureRecord record{0, 0, width, height, format};
    f_.GenTextures(1, &record.name);
    f_.BindTexture(GL_TEXTURE_2D, record.name);
    const bool rgba = format == TextureFormat::Rgba8;
    const size_t size = static_cast<size_t>(width) * static_cast<size_t>(height) * (rgba ? 4 : 1);
    const std::vector<uint8_t> clear(pixels.size() >= size ? 0 : size, 0);
    f_.TexImage2D(GL_TEXTURE_2D, 0, rgba ? GL_RGBA8 : GL_R8, width, height, 0, rgba ? GL_RGBA : GL_RED,
                  GL_UNSIGNED_BYTE, pixels.size() >= size ? pixels.data() : clear.data());
    if (!rgba) {
      // Coverage reads as white with that alpha, so the vertex colour tints it.
      const GLint swizzle[] = {GL_ONE, GL_ONE, GL_ONE, GL_RED};
      f_.TexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_SWIZZLE_RGBA, swizzle);
    }
    f_.TexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    f_.TexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    apply_filter();
    if (render_target) {
      f_.GenFramebuffers(1, &record.framebuffer);
      f_.BindFramebuffer(GL_FRAMEBUFFER, record.framebuffer);
      f_.FramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, record.name, 0);
      const bool complete = f_.CheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
      f_.BindFramebuffer(GL_FRAMEBUFFER, target_framebuffer_);
    // Only a long run of drawing on one target has to wait for the device.
    vertices_since_finish_ = draws_since_finish_ = 0;
      if (!complete) {
        f_.DeleteFramebuffers(1, &record.framebuffer);
        f_.DeleteTextures(1, &record.name);
        return 0;
      }
    }
    const TextureId id = next_id_++;
    textures_[id] = record;
    return id;
  }

  void update_texture(TextureId texture, int x, int y, int width, int height,
                      std::span<const uint8_t> pixels) override {
    const TextureRecord* record = find(texture);
    if (!record || width < 1 || height < 1) return;
    const bool rgba = record->format == TextureFormat::Rgba8;
    if (pixels.size() < static_cast<size_t>(width) * static_cast<size_t>(height) * (rgba ? 4 : 1)) return;
    f_.BindTexture(GL_TEXTURE_2D, record->name);
    f_.TexSubImage2D(GL_TEXTURE_2D, 0, x, y, width, height, rgba ? GL_RGBA : GL_RED, GL_UNSIGNED_BYTE, pixels.data());
  }

  void free_texture(TextureId texture) override {
    const TextureRecord* record = find(texture);
    if (!record) return;
    if (record->framebuffer) f_.DeleteFramebuffers(1, &record->framebuffer);
    f_.DeleteTextures(1, &record->name);
    textures_.erase(texture);
  }

  void set_target(TextureId texture, int width, int height) override {
    if (!ready()) return;
    const TextureRecord* record = texture ? find(texture) : nullptr;
    target_texture_ = record && record->framebuffer ? texture : 0;
    target_framebuffer_ = record ? record->framebuffer : 0;
    target_height_ = record ? record->height : height;
    f_.BindFramebuffer(GL_FRAMEBUFFER, target_framebuffer_);
    // Only a long run of drawing on one target has to wait for the device.
    vertices_since_finish_ = draws_since_finish_ = 0;
    set_viewport(0, 0, record ? record->width : width, target_height_);
  }

  void set_viewport(int x, int y, int width, int height) override {
    if (!ready()) return;
    // The window counts rows from the bottom.
    f_.Viewport(x, target_framebuffer_ ? y : target_height_ - y - height, width, height);
  }

  void clear(float red, float green, float blue, float alpha) override {
    if (!ready()) return;
    f_.ClearColor(red, green, blue, alpha);
    f_.Clear(GL_COLOR_BUFFER_BIT);
  }

  bool copy_target(TextureId source) override {
    const TextureRecord* from = find(source);
    const TextureRecord* to = target_texture_ ? find(target_texture_) : nullptr;
    if (!from || !from->framebuffer || !to || to->width != from->width || to->height != from->height) return false;
    f_.BindFramebuffer(GL_READ_FRAMEBUFFER, from->framebuffer);
    f_.BlitFramebuffer(0, 0, from->width, from->height, 0, 0, from->width, from->height, GL_COLOR_BUFFER_BIT,
                       GL_NEAREST);
    f_.BindFramebuffer(GL_FRAMEBUFFER, target_framebuffer_);
    // Only a long run of drawing on one target has to wait for the device.
    vertices_since_finish_ = draws_since_finish_ = 0;
    return true;
  }

  void set_transform(const float (&matrix)[16]) override {
    std::copy(std::begin(matrix), std::end(matrix), transform_);
  }

  void set_blend(int source, int destination) override {
    if (!ready()) return;
    // One and zero copy the source: the same pixels without reading the target, which a software device does much faster.
    if (blend_factor(source) == GL_ONE && blend_factor(destination) == GL_ZERO) {
      f_.Disable(GL_BLEND);
      return;
    }
    f_.Enable(GL_BLEND);
    f_.BlendFuncSeparate(blend_factor(source), blend_factor(destination), blend_factor(source),
                         blend_factor(destination));
  }

  void set_filter(bool linear) override {
    linear_ = linear;
    if (!ready()) return;
    for (auto& [id, record] : textures_) {
      f_.BindTexture(GL_TEXTURE_2D, record.name);
      apply_filter();
    }
  }

  void draw(Primitive type, TextureId texture, std::span<const Vertex> vertices,
            std::span<const uint32_t> indices) override {
    if (vertices.empty() || !ready()) return;
    // Render targets keep their rows the other way up from the window.
    float matrix[16];
    std::copy(std::begin(transform_), std::end(transform_), matrix);
    if (target_framebuffer_) {
      for (int column = 0; column < 4; ++column) matrix[column * 4 + 1] = -matrix[column * 4 + 1];
    }
    const TextureRecord* record = texture ? find(texture) : nullptr;
    const Pipeline& pipeline = !record ? plain_ : selection_mask_ ? selection_ : textured_;
    if (&pipeline != in_use_) {
      f_.UseProgram(pipeline.program);
      in_use_ = &pipeline;
    }
    f_.UniformMatrix4fv(pipeline.transform_location, 1, GL_FALSE, matrix);
    if (record) f_.BindTexture(GL_TEXTURE_2D, record->name);
    f_.BufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(vertices.size_bytes()), vertices.data(), GL_STREAM_DRAW);
    const GLenum mode = type == Primitive::Points ? GL_POINTS : type == Primitive::Lines ? GL_LINES : GL_TRIANGLES;
    if (indices.empty()) {
      f_.DrawArrays(mode, 0, static_cast<GLsizei>(vertices.size()));
    } else {
      f_.BufferData(GL_ELEMENT_ARRAY_BUFFER, static_cast<GLsizeiptr>(indices.size_bytes()), indices.data(),
                    GL_STREAM_DRAW);
      f_.DrawElements(mode, static_cast<GLsizei>(indices.size()), GL_UNSIGNED_INT, nullptr);
    }
    ++draw_calls_;
    // A driver may hold every draw of a frame until it is shown; a frame
    // that draws without end has its work done now and then instead, so
    // that what the driver holds stays bounded.
    vertices_since_finish_ += vertices.size();
    if (vertices_since_finish_ > FINISH_AFTER_VERTICES || ++draws_since_finish_ > FINISH_AFTER_DRAWS) {
      f_.Finish();
      vertices_since_finish_ = draws_since_finish_ = 0;
    }
  }

  void set_selection_mask(TextureId mask, const float (&text)[4], const float (&background)[4]) override {
    const TextureRecord* record = mask ? find(mask) : nullptr;
    selection_mask_ = record ? mask : 0;
    if (!record || !ready()) return;
    f_.UseProgram(selection_.program);
    in_use_ = &selection_;
    f_.Uniform4f(f_.GetUniformLocation(selection_.program, "text_colour"), text[0], text[1], text[2], text[3]);
    f_.Uniform4f(f_.GetUniformLocation(selection_.program, "background"), background[0], background[1],
                 background[2], background[3]);
    f_.ActiveTexture(GL_TEXTURE1);
    f_.BindTexture(GL_TEXTURE_2D, record->name);
    f_.ActiveTexture(GL_TEXTURE0);
  }

  uint64_t draw_calls() const override { return draw_calls_; }
  static constexpr size_t FINISH_AFTER_VERTICES = 1 << 16;
  static constexpr size_t FINISH_AFTER_DRAWS = 8192;
  void reset_draw_calls() override { draw_calls_ = 0; }

  void read_pixels(int x, int y, int width, int height, std::span<uint8_t> rgba) override {
    const size_t row = static_cast<size_t>(std::max(width, 0)) * 4;
    if (rgba.size() < row * static_cast<size_t>(std::max(height, 0))) return;
    std::fill(rgba.begin(), rgba.end(), 0);
    if (!ready() || width < 1 || height < 1) return;
    f_.PixelStorei(GL_PACK_ALIGNMENT, 1);
    if (target_framebuffer_) {
      f_.ReadPixels(x, y, width, height, GL_RGBA, GL_UNSIGNED_BYTE, rgba.data());
      return;
    }
    // The window's rows come bottom first: turn them round.
    f_.ReadPixels(x, target_height_ - y - height, width, height, GL_RGBA, GL_UNSIGNED_BYTE, rgba.data());
    std::vector<uint8_t> swap(row);
    for (int top = 0, bottom = height - 1; top < bottom; ++top, --bottom) {
      uint8_t* a = rgba.data() + static_cast<size_t>(top) * row;
      uint8_t* b = rgba.data() + static_cast<size_t>(bottom) * row;
      std::copy(a, a + row, swap.data());
      std::copy(b, b + row, a);
      std::copy(swap.data(), swap.data() + row, b);
    }
  }

 private:
  const TextureRecord* find(TextureId texture) {
    if (!ready()) return nullptr;
    auto it = textures_.find(texture);
    return it == textures_.end() ? nullptr : &it->second;
  }

  void apply_filter() {
    const GLint filter = linear_ ? GL_LINEAR : GL_NEAREST;
    f_.TexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, filter);
    f_.TexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, filter);
  }

  GLuint compile(GLenum kind, const char* source) {
    const GLuint shader = f_.CreateShader(kind);
    f_.ShaderSource(shader, 1, &source, nullptr);
    f_.CompileShader(shader);
    GLint ok = 0;
    f_.GetShaderiv(shader, GL_COMPILE_STATUS, &ok);
    return ok ? shader : 0;
  }

  // The program of a vertex and a fragment shader, or 0 when either fails.
  GLuint link(const char* vertex_source, const char* fragment_source) {
    const GLuint vertex = compile(GL_VERTEX_SHADER, vertex_source);
    const GLuint fragment = compile(GL_FRAGMENT_SHADER, fragment_source);
    if (!vertex || !fragment) return 0;
    const GLuint program = f_.CreateProgram();
    f_.AttachShader(program, vertex);
    f_.AttachShader(program, fragment);
    f_.LinkProgram(program);
    f_.DeleteShader(vertex);
    f_.DeleteShader(fragment);
    GLint linked = 0;
    f_.GetProgramiv(program, GL_LINK_STATUS, &linked);
    return linked ? program : 0;
  }

  // The shaders, the vertex layout and the default state.
  bool make_pipeline() {
    textured_.program = link(VERTEX_SHADER, FRAGMENT_SHADER);
    plain_.program = link(PLAIN_VERTEX_SHADER, PLAIN_FRAGMENT_SHADER);
    selection_.program = link(VERTEX_SHADER, SELECTION_FRAGMENT_SHADER);
    if (!textured_.program || !plain_.program || !selection_.program) return false;
    selection_.transform_location = f_.GetUniformLocation(selection_.program, "transform");
    f_.UseProgram(selection_.program);
    f_.Uniform1i(f_.GetUniformLocation(selection_.program, "image"), 0);
    f_.Uniform1i(f_.GetUniformLocation(selection_.program, "mask"), 1);
    textured_.transform_location = f_.GetUniformLocation(textured_.program, "transform");
    plain_.transform_location = f_.GetUniformLocation(plain_.program, "transform");
    f_.UseProgram(textured_.program);
    f_.Uniform1i(f_.GetUniformLocation(textured_.program, "image"), 0);
    in_use_ = &textured_;

    GLuint vao = 0, buffers[2] = {};
    f_.GenVertexArrays(1, &vao);
    f_.BindVertexArray(vao);
    f_.GenBuffers(2, buffers);
    f_.BindBuffer(GL_ARRAY_BUFFER, buffers[0]);
    f_.BindBuffer(GL_ELEMENT_ARRAY_BUFFER, buffers[1]);
    const auto stride = static_cast<GLsizei>(sizeof(Vertex));
    f_.VertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, stride, reinterpret_cast<void*>(offsetof(Vertex, x)));
    f_.VertexAttribPointer(1, 4, GL_UNSIGNED_BYTE, GL_TRUE, stride, reinterpret_cast<void*>(offsetof(Vertex, colour)));
    f_.VertexAttribPointer(2, 2, GL_FLOAT, GL_FALSE, stride, reinterpret_cast<void*>(offsetof(Vertex, u)));
    f_.VertexAttribPointer(3, 4, GL_UNSIGNED_BYTE, GL_TRUE, stride,
                           reinterpret_cast<void*>(offsetof(Vertex, centre_colour)));
    f_.VertexAttribPointer(4, 1, GL_FLOAT, GL_FALSE, stride, reinterpret_cast<void*>(offsetof(Vertex, sides)));
    for (GLuint k = 0; k < 5; ++k) f_.EnableVertexAttribArray(k);

    f_.PixelStorei(GL_UNPACK_ALIGNMENT, 1);
    f_.ActiveTexture(GL_TEXTURE0);

    f_.Enable(GL_BLEND);
    f_.BlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    target_framebuffer_ = 0;
    target_texture_ = 0;
    target_height_ = window_if_made()->size().height;
    return true;
  }

  gl::Functions f_{};
  SDL_GLContext context_ = nullptr;
  bool usable_ = false;
  uint64_t generation_ = 0;
  std::unordered_map<TextureId, TextureRecord> textures_;
  TextureId next_id_ = 1;
  // A linked shader program and where its transform goes.
  struct Pipeline {
    GLuint program = 0;
    GLint transform_location = -1;
  };
  Pipeline textured_, plain_, selection_;
  TextureId selection_mask_ = 0;  // the mask of selected text, 0 when none is in use
  const Pipeline* in_use_ = nullptr;
  GLuint target_framebuffer_ = 0;
  TextureId target_texture_ = 0;  // the render target drawn on, 0 for the window
  int target_height_ = 0;
  bool linear_ = false;
  float transform_[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
  uint64_t draw_calls_ = 0;
  // What was drawn on the current target since the device last finished its work.
  size_t vertices_since_finish_ = 0, draws_since_finish_ = 0;
};

}  // namespace

Gpu& gpu() {
  static GlGpu device;
  return device;
}

}  // namespace platform
