#include "helper/Renderer.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <string_view>
#include <system_error>

#include <epoxy/gl.h>
#include <fcntl.h>
#include <gtk/gtk.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "helper/GObjectPtr.h"
#include "text/LowerCase.h"

namespace zovk::helper {
namespace {

namespace fs = std::filesystem;

constexpr gint64 kPatience = 5 * G_USEC_PER_SEC;
constexpr std::size_t kLongestName = 4096;

/// As drivers that draw with the processor write it, or what they draw for.
constexpr std::array kSoftware = {"llvmpipe",    "softpipe", "swrast",      "lavapipe",
                                  "swiftshader", "software", "basic render"};
/// Devices of drivers that do not use the system's own folder of devices.
constexpr std::array kDevices = {"nvidia", "mali", "kgsl", "dxg", "pvr"};

/// Starts the program with its output in the pipe; -1 when it cannot be.
pid_t start(std::string program, std::string displays, int output) {
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_adddup2(&files, output, STDOUT_FILENO);
  posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);
  std::string wish = kWriteRenderer;
  const std::array<char*, 4> arguments{program.data(), wish.data(), displays.data(), nullptr};
  pid_t pid = -1;
  const int error = posix_spawn(&pid, program.c_str(), &files, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&files);
  return error == 0 ? pid : -1;
}

/// Reads the pipe until its end. Returns whether the end came in time.
bool readAll(int pipe, std::string& text) {
  const gint64 deadline = g_get_monotonic_time() + kPatience;
  std::array<char, 256> bytes;
  for (;;) {
    const gint64 left = (deadline - g_get_monotonic_time()) / 1000;
    pollfd waiting{pipe, POLLIN, 0};
    if (left <= 0 || poll(&waiting, 1, static_cast<int>(left)) == 0) return false;
    const ssize_t count = read(pipe, bytes.data(), bytes.size());
    if (count == 0) return true;
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 || text.size() > kLongestName) return false;
    text.append(bytes.data(), static_cast<std::size_t>(count));
  }
}

/// Drivers write there, too; the name comes last.
std::string lastLine(std::string text) {
  while (!text.empty() && text.back() == '\n') text.pop_back();
  return text.substr(text.rfind('\n') + 1);
}

}  // namespace

bool hasGraphicsDevice() {
  return holdsGraphicsDevice("/dev");
}

bool holdsGraphicsDevice(const std::string& devices) {
  std::error_code none;
  if (fs::exists(fs::path(devices) / "dri", none)) return true;
  for (const fs::directory_entry& entry : fs::directory_iterator(devices, none)) {
    const std::string name = entry.path().filename().string();
    const bool known = std::any_of(kDevices.begin(), kDevices.end(),
                                   [&name](const char* start) { return name.starts_with(start); });
    if (known) return true;
  }
  return false;
}

bool isSoftwareRenderer(const std::string& name) {
  const std::string known = lowerCase(name);
  return std::any_of(kSoftware.begin(), kSoftware.end(),
                     [&known](const char* word) { return known.find(word) != std::string::npos; });
}

std::string rendererOf(const std::string& program, const std::string& displays) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return {};
  const pid_t pid = start(program, displays, ends[1]);
  close(ends[1]);
  std::string text;
  const bool whole = pid > 0 && readAll(ends[0], text);
  close(ends[0]);
  if (pid <= 0) return {};
  if (!whole) kill(pid, SIGKILL);
  int status = 0;
  while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
  }
  return whole && status == 0 ? lastLine(text) : std::string();
}

int writeRenderer(const char* displays) {
  gdk_set_allowed_backends(displays);
  GdkDisplay* display = gdk_display_open(nullptr);
  if (display == nullptr) return 1;
  ErrorOut noContext;
  const auto context =
      GObjectPtr<GdkGLContext>::adopt(gdk_display_create_gl_context(display, noContext));
  ErrorOut notReal;
  if (!context || !gdk_gl_context_realize(context.get(), notReal)) return 1;
  gdk_gl_context_make_current(context.get());
  const auto* name = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
  if (name == nullptr) return 1;
  std::printf("\n%s\n", name);
  std::fflush(stdout);
  _exit(0);  // skips what drivers do at the end of a process
}

}  // namespace zovk::helper
