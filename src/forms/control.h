#pragma once

#include <string>
#include <vector>

namespace tarvo {

// Marks a phrase that is shown to the user but is not the literal argument of a Translate call
// (captions and tooltips, which their window translates), so that it gets into the phrase template.
// Gives it back as it is.
constexpr const char* Phrase(const char* english) { return english; }

// Lengths are in twips: 1440 to the inch, 15 to a pixel at 96 dots per inch.
struct Bounds {
  float Left = 0;
  float Top = 0;
  float Width = 0;
  float Height = 0;
};

struct Font {
  std::string Name = "Arial";
  float Size = 8.25F;  // in points
  bool Bold = false;
};

// What every control has. A control is plain state: the window's handlers change it, a front end
// shows it.
class Control {
 public:
  virtual ~Control() = default;

  // The texts of the control that its window translates, in the order in which they are translated.
  virtual std::vector<std::string*> TranslatableTexts() = 0;

  std::string Name;  // as the window's code calls it; set by the window
  bool Visible = true;
  bool Enabled = true;
  Bounds Place;
};

}  // namespace tarvo
