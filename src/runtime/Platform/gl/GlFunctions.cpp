#include "runtime/Platform/gl/GlFunctions.h"

#include <SDL.h>

namespace platform::gl {

namespace {

template <class Pointer>
bool load(Pointer& pointer, const char* name) {
  pointer = reinterpret_cast<Pointer>(SDL_GL_GetProcAddress(name));
  return pointer != nullptr;
}

}  // namespace

bool load_functions(Functions& f) {
  return load(f.GetError, "glGetError") && load(f.GenTextures, "glGenTextures") &&
         load(f.DeleteTextures, "glDeleteTextures") && load(f.BindTexture, "glBindTexture") &&
         load(f.ActiveTexture, "glActiveTexture") && load(f.TexImage2D, "glTexImage2D") &&
         load(f.TexSubImage2D, "glTexSubImage2D") && load(f.TexParameteri, "glTexParameteri") &&
         load(f.TexParameteriv, "glTexParameteriv") && load(f.PixelStorei, "glPixelStorei") &&
         load(f.GenFramebuffers, "glGenFramebuffers") && load(f.DeleteFramebuffers, "glDeleteFramebuffers") &&
         load(f.BindFramebuffer, "glBindFramebuffer") && load(f.FramebufferTexture2D, "glFramebufferTexture2D") &&
         load(f.CheckFramebufferStatus, "glCheckFramebufferStatus") && load(f.Viewport, "glViewport") &&
         load(f.ClearColor, "glClearColor") && load(f.Clear, "glClear") && load(f.CreateShader, "glCreateShader") &&
         load(f.ShaderSource, "glShaderSource") && load(f.CompileShader, "glCompileShader") &&
         load(f.GetShaderiv, "glGetShaderiv") && load(f.DeleteShader, "glDeleteShader") &&
         load(f.CreateProgram, "glCreateProgram") && load(f.AttachShader, "glAttachShader") &&
         load(f.LinkProgram, "glLinkProgram") && load(f.GetProgramiv, "glGetProgramiv") &&
         load(f.UseProgram, "glUseProgram") && load(f.GetUniformLocation, "glGetUniformLocation") &&
         load(f.UniformMatrix4fv, "glUniformMatrix4fv") && load(f.Uniform1i, "glUniform1i") && load(f.Uniform4f, "glUniform4f") &&
         load(f.GenVertexArrays, "glGenVertexArrays") && load(f.BindVertexArray, "glBindVertexArray") &&
         load(f.GenBuffers, "glGenBuffers") && load(f.BindBuffer, "glBindBuffer") &&
         load(f.BufferData, "glBufferData") && load(f.VertexAttribPointer, "glVertexAttribPointer") &&
         load(f.EnableVertexAttribArray, "glEnableVertexAttribArray") && load(f.DrawArrays, "glDrawArrays") &&
         load(f.DrawElements, "glDrawElements") && load(f.Finish, "glFinish") && load(f.BlitFramebuffer, "glBlitFramebuffer") &&
         load(f.Enable, "glEnable") && load(f.Disable, "glDisable") &&
         load(f.BlendFuncSeparate, "glBlendFuncSeparate") && load(f.ReadPixels, "glReadPixels");
}

}  // namespace platform::gl
