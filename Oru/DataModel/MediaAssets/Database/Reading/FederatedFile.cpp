#include "Oru/DataModel/MediaAssets/Database/Reading/FederatedFile.h"

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/NotSupportedException.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"
#include "Oru/DataModel/MediaAssets/Database/Reading/MediaAssetReader.h"

#include <condition_variable>
#include <exception>
#include <mutex>
#include <utility>

namespace Oru::DataModel::MediaAssets::Database {

using Common::Databases::ArgumentException;
using Common::Databases::InvalidOperationException;
using Common::Databases::NotSupportedException;
using Answer = FederatedSearch::Answer;

namespace {

// The text for a file that is there already. Options that the caller gives follow ours, and replace them.
std::string OfExistingFile(const std::string& connection, std::chrono::milliseconds deadline) {
  const std::string options = "?mode=rw&_statement_timeout=" + std::to_string(deadline.count());
  if (connection.empty()) return connection;
  if (connection.compare(0, 5, "file:") == 0) {
    std::string text = connection.substr(0, connection.find('#'));
    const std::size_t mark = text.find('?');
    if (mark == std::string::npos) return text + options;
    return text.replace(mark, 1, options + "&");
  }
  // https://sqlite.org/uri.html
  std::string text = "file:";
  for (const char c : connection) {
    if (c == '%') text += "%25";
    if (c == '#') text += "%23";
    if (c == '?') text += "%3f";
    if (c != '%' && c != '#' && c != '?') text += c;
  }
  return text + options;
}

}  // namespace

struct FederatedFile::Shared {
  explicit Shared(const std::string& connection) : database(connection, nullptr) {}

  Answer Run(const MediaAssetSearch& search, MediaAssetParts parts) {
    Answer answer;
    try {
      if (!database.IsOpen()) database.Open();
      answer.page = reader.Read(search, parts, &answer.orderValues);
      return answer;
    } catch (const ArgumentException&) {
      answer.failure = database.LastFailure();
    } catch (const InvalidOperationException&) {
      answer.failure = database.LastFailure();
    } catch (const NotSupportedException&) {
      answer.failure = database.LastFailure();
    } catch (const std::exception& exception) {
      // What the file holds makes no asset.
      answer.failure = exception.what();
    }
    // The next search begins with an opening: the file may be another one by then.
    database.Close();
    return answer;
  }

  std::mutex mutex;
  std::condition_variable wake;
  std::packaged_task<Answer()> task;
  bool isStopping = false;
  DataModelDatabase database;
  MediaAssetReader reader{database.GetMediaAssetTable()};
};

FederatedFile::FederatedFile(const std::string& connection, std::chrono::milliseconds deadline)
    : patience(deadline), shared(std::make_shared<Shared>(OfExistingFile(connection, deadline))) {
  std::packaged_task<void()> serving([common = shared] { Serve(common); });
  end = serving.get_future();
  thread = std::thread(std::move(serving));
}

FederatedFile::~FederatedFile() {
  Stop();
  if (end.wait_until(*patienceEnd) == std::future_status::ready) {
    thread.join();
  } else {
    thread.detach();
  }
}

void FederatedFile::Serve(const std::shared_ptr<Shared>& shared) {
  std::unique_lock<std::mutex> lock(shared->mutex);
  for (;;) {
    shared->wake.wait(lock, [&] { return shared->isStopping || shared->task.valid(); });
    if (shared->isStopping) break;
    std::packaged_task<Answer()> task = std::move(shared->task);
    lock.unlock();
    task();
    lock.lock();
  }
  shared->database.Close();
}

std::future<Answer> FederatedFile::Ask(MediaAssetSearch search, MediaAssetParts parts) {
  std::packaged_task<Answer()> task(
      [common = shared.get(), asked = std::move(search), parts] { return common->Run(asked, parts); });
  std::future<Answer> answer = task.get_future();
  {
    const std::lock_guard<std::mutex> lock(shared->mutex);
    shared->task = std::move(task);
  }
  shared->wake.notify_one();
  return answer;
}

void FederatedFile::Interrupt() {
  shared->database.Interrupt();
}

void FederatedFile::Stop() {
  if (!patienceEnd) patienceEnd = std::chrono::steady_clock::now() + patience;
  {
    const std::lock_guard<std::mutex> lock(shared->mutex);
    shared->isStopping = true;
  }
  shared->wake.notify_one();
  Interrupt();
}

}  // namespace Oru::DataModel::MediaAssets::Database
