#include "mainwindow/TopicHistory.h"

#include <QUndoCommand>
#include <QUndoStack>
#include <utility>

#include "model/TarvelinTopic.h"
#include "startup/modStartup.h"

namespace tarvelin {

// One step: undo and redo only move the history's current snapshot; the history then puts it into the
// live topic, so that the window is told once per undo or redo.
class TopicHistory::Step final : public QUndoCommand {
 public:
  Step(Snapshot& Current, Snapshot Before, Snapshot After, int MergeID)
      : current_(Current), before_(std::move(Before)), after_(std::move(After)), mergeID_(MergeID) {}

  void undo() override { current_ = before_; }
  void redo() override { current_ = after_; }
  int id() const override { return mergeID_; }

  // A run that comes back to where it started leaves no step behind.
  bool mergeWith(const QUndoCommand* Other) override {
    after_ = static_cast<const Step*>(Other)->after_;
    setObsolete(*after_ == *before_);
    return true;
  }

 private:
  Snapshot& current_;
  Snapshot before_, after_;
  int mergeID_;
};

TopicHistory::TopicHistory(ShowTopic Show) : show_(std::move(Show)), stack_(std::make_unique<QUndoStack>()) {
  stack_->setUndoLimit(StepLimit);
  Clear();
}

TopicHistory::~TopicHistory() = default;

void TopicHistory::Record(int MergeKey) {
  if (openSteps_ > 0) {
    return;
  }
  if (MergeKey == NoMerge) {
    pEndRun();
  } else if (MergeKey != runKey_) {
    runKey_ = MergeKey;
    ++runID_;
  }
  const TarvelinTopic& live = *Program().Topic;
  if (*current_ == live) {
    return;
  }
  // Qt's own "no merge" id is -1.
  const int mergeID = MergeKey == NoMerge ? -1 : runID_;
  stack_->push(new Step(current_, current_, std::make_shared<const TarvelinTopic>(live), mergeID));
}

void TopicHistory::BeginStep() {
  ++openSteps_;
}

void TopicHistory::EndStep() {
  if (openSteps_ == 0) {
    return;
  }
  if (--openSteps_ == 0) {
    Record();
  }
}

void TopicHistory::Clear() {
  stack_->clear();
  current_ = std::make_shared<const TarvelinTopic>(*Program().Topic);
  if (Program().Modified) {
    stack_->resetClean();
  }
}

void TopicHistory::MarkSaved() {
  Record();
  stack_->setClean();
}

void TopicHistory::Undo() {
  if (CanUndo()) {
    pEndRun();
    stack_->undo();
    pPutCurrentIntoLiveTopic();
  }
}

void TopicHistory::Redo() {
  if (CanRedo()) {
    pEndRun();
    stack_->redo();
    pPutCurrentIntoLiveTopic();
  }
}

bool TopicHistory::CanUndo() const {
  return openSteps_ == 0 && stack_->canUndo();
}

bool TopicHistory::CanRedo() const {
  return openSteps_ == 0 && stack_->canRedo();
}

void TopicHistory::pEndRun() {
  runKey_ = NoMerge;
}

void TopicHistory::pPutCurrentIntoLiveTopic() {
  TarvelinTopic& live = *Program().Topic;
  const bool countsChanged =
      live.TotalOptions() != current_->TotalOptions() || live.TotalAttributes() != current_->TotalAttributes();
  live = *current_;
  if (stack_->isClean()) {
    Program().Modified = false;
  } else {
    SetModified();
  }
  if (show_) {
    show_(countsChanged);
  }
}

}  // namespace tarvelin
