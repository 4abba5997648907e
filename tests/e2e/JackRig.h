// tembrel run under a real JACK server, and another client that hears it.
#pragma once

#include "e2e/JackPeer.h"
#include "e2e/JackServer.h"
#include "e2e/RunningProgram.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

inline const char* const tembrel = TEMBREL_BIN_DIR "/tembrel";

inline std::vector<std::string> bytesOf(const std::vector<JackPeer::Event>& events) {
    std::vector<std::string> bytes;
    for (const auto& event : events) {
        bytes.push_back(event.bytes);
    }
    return bytes;
}

class JackRig : public testing::Test {
protected:
    static constexpr int period = 256;

    void SetUp() override {
        if (!JackServer::isInstalled()) {
            GTEST_SKIP() << "there is no jackd";
        }
        ASSERT_TRUE(server.isRunning()) << server.error();
        startPeer();
    }
    void TearDown() override { server.goOn(); } // else nobody could leave it
    void startPeer() {
        peer = std::make_unique<JackPeer>("peer");
        ASSERT_TRUE(peer->isOpen());
    }
    std::unique_ptr<RunningProgram> start(std::vector<std::string> more = {}) {
        std::vector<std::string> arguments{"run",  "--headless", "--midi",
                                           "jack", "--data",     (folder.path() / "data").string()};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return std::make_unique<RunningProgram>(tembrel, std::move(arguments), folder.path());
    }
    // One whose whole road is open; throws what it said when that does not come about.
    std::unique_ptr<RunningProgram> startHeard(std::vector<std::string> more = {}) {
        auto program = start(std::move(more));
        if (!connect() || !isHeard()) {
            throw std::runtime_error("it is not heard: " + program->error());
        }
        return program;
    }
    [[nodiscard]] bool connect() const {
        return eventually([this] { return peer->sees("Tembrel:in") && peer->sees("Tembrel:out"); }) &&
               eventually([this] { return peer->connect("Tembrel:in", "Tembrel:out"); });
    }
    // Whether the program's whole road is open: what is sent to ports that are there, but not yet enabled, is lost.
    // Asks with controllers of no meaning until the last one comes back; the peer then has sent and received nothing.
    [[nodiscard]] bool isHeard() const {
        int looks = 0;
        std::uint8_t question = 0;
        const bool heard = eventually([&] {
            if (looks++ % 50 == 0) {
                question = static_cast<std::uint8_t>((question + 1) % 128);
                peer->send({{0xB0, 3, question}}, {0});
            }
            const auto bytes = bytesOf(peer->received());
            return std::find(bytes.begin(), bytes.end(), "B0 3 " + std::to_string(question)) != bytes.end();
        });
        peer->forget();
        return heard;
    }
    std::string file(const std::string& name, const std::string& content) const {
        std::ofstream((folder.path() / name), std::ios::binary) << content;
        return (folder.path() / name).string();
    }

    TemporaryFolder folder;
    JackServer server{folder.path(), period};
    std::unique_ptr<JackPeer> peer;
};
