// The OpenGL entry points that drawing uses, looked up through SDL once a
// context exists. Core-profile functions aren't exported by every system's
// library, so none is called by its symbol; the oldest ones only lend their
// declared types.
#pragma once

#include <SDL_opengl.h>
#include <SDL_opengl_glext.h>

namespace platform::gl {

struct Functions {
  decltype(&::glGetError) GetError;
  decltype(&::glGenTextures) GenTextures;
  decltype(&::glDeleteTextures) DeleteTextures;
  decltype(&::glBindTexture) BindTexture;
  PFNGLACTIVETEXTUREPROC ActiveTexture;
  decltype(&::glTexImage2D) TexImage2D;
  decltype(&::glTexSubImage2D) TexSubImage2D;
  decltype(&::glTexParameteri) TexParameteri;
  decltype(&::glTexParameteriv) TexParameteriv;
  decltype(&::glPixelStorei) PixelStorei;
  PFNGLGENFRAMEBUFFERSPROC GenFramebuffers;
  PFNGLDELETEFRAMEBUFFERSPROC DeleteFramebuffers;
  PFNGLBINDFRAMEBUFFERPROC BindFramebuffer;
  PFNGLBLITFRAMEBUFFERPROC BlitFramebuffer;
  PFNGLFRAMEBUFFERTEXTURE2DPROC FramebufferTexture2D;
  PFNGLCHECKFRAMEBUFFERSTATUSPROC CheckFramebufferStatus;
  decltype(&::glViewport) Viewport;
  decltype(&::glClearColor) ClearColor;
  decltype(&::glClear) Clear;
  PFNGLCREATESHADERPROC CreateShader;
  PFNGLSHADERSOURCEPROC ShaderSource;
  PFNGLCOMPILESHADERPROC CompileShader;
  PFNGLGETSHADERIVPROC GetShaderiv;
  PFNGLDELETESHADERPROC DeleteShader;
  PFNGLCREATEPROGRAMPROC CreateProgram;
  PFNGLATTACHSHADERPROC AttachShader;
  PFNGLLINKPROGRAMPROC LinkProgram;
  PFNGLGETPROGRAMIVPROC GetProgramiv;
  PFNGLUSEPROGRAMPROC UseProgram;
  PFNGLGETUNIFORMLOCATIONPROC GetUniformLocation;
  PFNGLUNIFORMMATRIX4FVPROC UniformMatrix4fv;
  PFNGLUNIFORM1IPROC Uniform1i;
  PFNGLUNIFORM4FPROC Uniform4f;
  PFNGLGENVERTEXARRAYSPROC GenVertexArrays;
  PFNGLBINDVERTEXARRAYPROC BindVertexArray;
  PFNGLGENBUFFERSPROC GenBuffers;
  PFNGLBINDBUFFERPROC BindBuffer;
  PFNGLBUFFERDATAPROC BufferData;
  PFNGLVERTEXATTRIBPOINTERPROC VertexAttribPointer;
  PFNGLENABLEVERTEXATTRIBARRAYPROC EnableVertexAttribArray;
  decltype(&::glDrawArrays) DrawArrays;
  decltype(&::glDrawElements) DrawElements;
  decltype(&::glFinish) Finish;
  decltype(&::glEnable) Enable;
  decltype(&::glDisable) Disable;
  PFNGLBLENDFUNCSEPARATEPROC BlendFuncSeparate;
  decltype(&::glReadPixels) ReadPixels;
};

// Looks every entry point up in the current context; false if one is missing.
bool load_functions(Functions& f);

}  // namespace platform::gl
