#pragma once

#include <QtGlobal>
#include <functional>
#include <memory>

class QUndoStack;

namespace tarvelin {

class TarvelinTopic;

// The undo history of the live topic (Program().Topic). Every step keeps the whole topic as it was before
// and after, because with normalisation on a weighting change rescales the others and cannot be reversed
// by arithmetic. Neighbouring steps share their common snapshot, so each step costs one copy of the topic.
//
// The window makes its edit on the live topic first and then tells the history: Record for a single edit,
// or BeginStep and EndStep around a drag or a dialog, which become one step however many edits they hold.
// The live topic must exist for as long as the history does.
class TopicHistory final {
 public:
  // Called after an undo or redo has put a snapshot into the live topic; CountsChanged tells whether the
  // numbers of options or attributes differ from those before, so that the rows must be rebuilt.
  using ShowTopic = std::function<void(bool CountsChanged)>;

  // Record's key for an edit that never merges with the next one.
  static constexpr int NoMerge = 0;
  // Steps kept before the oldest is dropped. A 10 x 10 topic snapshot takes about 2.5 kB, so a full
  // history of such topics stays near 2.5 MB.
  static constexpr int StepLimit = 1000;

  // Starts a fresh history at the live topic (see Clear).
  explicit TopicHistory(ShowTopic Show);
  ~TopicHistory();
  Q_DISABLE_COPY_MOVE(TopicHistory)

  // Makes a step of whatever changed in the live topic since the last step; nothing when nothing changed
  // or while a step is open. Successive edits with the same MergeKey other than NoMerge (a run of key
  // presses on one slider, each slider with its own key) become one step, until anything else happens.
  void Record(int MergeKey = NoMerge);
  // Bracket a drag or a dialog: the edits between them become one step when the outermost EndStep comes,
  // and only when the topic changed. An EndStep without its BeginStep does nothing.
  void BeginStep();
  void EndStep();

  // For New, Load and an import: forgets every step and starts from the live topic. The topic is the clean
  // state when the modified flag is clear, so that undoing back to it clears the flag again.
  void Clear();
  // After a save as a topic file: the live topic becomes the clean state.
  void MarkSaved();

  // Both do nothing while a step is open or when there is no step to go. Afterwards the modified flag is
  // clear in the clean state and set everywhere else, and the window has been asked to show the topic.
  void Undo();
  void Redo();
  bool CanUndo() const;
  bool CanRedo() const;

 private:
  using Snapshot = std::shared_ptr<const TarvelinTopic>;
  class Step;

  void pEndRun();
  void pPutCurrentIntoLiveTopic();

  ShowTopic show_;
  std::unique_ptr<QUndoStack> stack_;
  Snapshot current_;  // the live topic as of the last step; the steps move it on undo and redo
  int openSteps_ = 0;
  int runKey_ = NoMerge;
  int runID_ = 0;  // the merge id of the current run of keyed edits; each run gets its own
};

}  // namespace tarvelin
