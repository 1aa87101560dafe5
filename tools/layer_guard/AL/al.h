// Only runtime/Platform talks to SDL2, OpenGL and OpenAL: the rest of Velant
// reaches them through the runtime. This header stands in the way of any other.
#error "SDL2, OpenGL and OpenAL headers belong to runtime/Platform alone"
