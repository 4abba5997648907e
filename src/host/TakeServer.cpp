#include "host/TakeServer.h"

#include "generators/recording/RecordFolder.h"
#include "host/TakeTalk.h"

#include <filesystem>
#include <string>

namespace Host {

using Platform::Fault;
using Platform::Result;

TakeServer::TakeServer(Backend::Recording::RetroRecord& record) {
    const std::filesystem::path folder = record.folder();
    if (folder.empty()) {
        return;
    }
    server_ = std::make_unique<Platform::LocalServer>(
        Backend::Recording::RecordFolder::serverName(folder), [&record](const std::string& text) {
            const auto question = readTakeQuestion(text);
            return textOf(question ? answerTo(*question, record)
                                   : Result<TakeAnswer>(Fault{"", 0, "the question is not understood"}));
        });
}

TakeServer::~TakeServer() = default;

} // namespace Host
