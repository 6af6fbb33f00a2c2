# The OpenGL renderer needs OpenGL's fixed functions and GLU's tessellator. In a library without it the renderer
# kinds 3 to 5 fail at creation.

set(OpenGL_GL_PREFERENCE GLVND)
find_package(OpenGL QUIET COMPONENTS OpenGL OPTIONAL_COMPONENTS EGL)
if(OPENGL_GLU_FOUND AND TARGET OpenGL::OpenGL)
  set(found_opengl ON)
else()
  set(found_opengl OFF)
endif()
option(OXLUME_OPENGL "Build the OpenGL renderer" ${found_opengl})
if(OXLUME_OPENGL AND NOT found_opengl)
  message(FATAL_ERROR "OXLUME_OPENGL needs the development files of OpenGL and GLU")
endif()

# Not OpenGL::GLU: that brings in the window system's side of OpenGL, which nothing here calls.
add_library(oxlume_opengl INTERFACE)
if(OXLUME_OPENGL)
  target_link_libraries(oxlume_opengl INTERFACE OpenGL::OpenGL ${OPENGL_glu_LIBRARY})
  target_include_directories(oxlume_opengl SYSTEM INTERFACE ${OPENGL_INCLUDE_DIR})
endif()
