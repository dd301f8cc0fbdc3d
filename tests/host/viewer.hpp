// wirelines view as it serves, and a client of it.
#pragma once

#include <httplib.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "program.hpp"

namespace wirelines::host {

class Viewer {
 public:
  // Runs `wirelines view ARGUMENTS`, given as the shell has them; with a browser only where that is asked for.
  explicit Viewer(const std::string& arguments, bool open = false) {
    int out[2];
    if (pipe(out) != 0) return;
    const auto command = std::string("exec '") + PROGRAM + "' view " + (open ? "" : "--no-open ") + arguments;
    process_ = fork();
    if (process_ == 0) {
      dup2(out[1], STDOUT_FILENO);
      close(out[0]);
      close(out[1]);
      execl("/bin/bash", "bash", "-c", command.c_str(), nullptr);
      _exit(127);
    }
    close(out[1]);
    char c = 0;
    while (read(out[0], &c, 1) == 1 && c != '\n') address_ += c;
    close(out[0]);
    const auto path = address_.find('/', std::string("http://").size());
    if (path == std::string::npos) return;
    host_ = address_.substr(7, path - 7);
    path_ = address_.substr(path);
    client_.emplace("http://" + host_);
  }
  Viewer(const Viewer&) = delete;
  Viewer& operator=(const Viewer&) = delete;
  ~Viewer() {
    if (process_ > 0) end();
  }

  // Ends it as Ctrl-C does, and returns its exit code.
  int end(int signal = SIGINT) {
    client_.reset();
    kill(process_, signal);
    int status = 0;
    waitpid(process_, &status, 0);
    process_ = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  // "http://127.0.0.1:PORT/TOKEN/", its parts, and who listens there.
  [[nodiscard]] const std::string& address() const { return address_; }
  [[nodiscard]] const std::string& host() const { return host_; }
  [[nodiscard]] const std::string& path() const { return path_; }
  httplib::Client& client() { return *client_; }

  // What api/NAME answers; null when that is no JSON or not of this status.
  nlohmann::json get(const std::string& name, int status = 200) {
    return json(client_->Get(path_ + "api/" + name), status);
  }
  nlohmann::json send(const std::string& method, const std::string& name, const nlohmann::json& body,
                      int status = 200) {
    const httplib::Headers headers = {{"X-Wirelines", "1"}};
    const auto to = path_ + "api/" + name;
    return json(method == "PUT" ? client_->Put(to, headers, body.dump(), "application/json")
                                : client_->Post(to, headers, body.dump(), "application/json"),
                status);
  }

  // Asks until `enough` says so, for ten seconds at most.
  nlohmann::json wait(const std::string& name, const std::function<bool(const nlohmann::json&)>& enough) {
    nlohmann::json last;
    for (int i = 0; i < 1000; i++) {
      last = get(name);
      if (enough(last)) break;
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_TRUE(enough(last)) << name << ": " << last;
    return last;
  }
  nlohmann::json wait_complete(const std::string& name) {
    return wait(name, [](const nlohmann::json& answer) { return answer.value("complete", false); });
  }

 private:
  static nlohmann::json json(const httplib::Result& result, int status) {
    EXPECT_TRUE(result);
    if (!result) return {};
    EXPECT_EQ(result->status, status) << result->body;
    return result->status == status ? nlohmann::json::parse(result->body, nullptr, false) : nlohmann::json();
  }

  pid_t process_ = 0;
  std::string address_, host_, path_;
  std::optional<httplib::Client> client_;
};

}  // namespace wirelines::host
