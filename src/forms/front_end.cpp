#include "forms/front_end.h"

#include <algorithm>

namespace tarvo {
namespace {

bool Contains(const std::vector<Form*>& forms, const Form& form) {
  return std::find(forms.begin(), forms.end(), &form) != forms.end();
}

void Remove(std::vector<Form*>& forms, const Form& form) {
  forms.erase(std::remove(forms.begin(), forms.end(), &form), forms.end());
}

}  // namespace

void FrontEnd::Load(Form& form) {
  if (IsLoaded(form)) return;
  loaded_.push_back(&form);
  try {
    form.Form_Load();
  } catch (...) {
    if (IsLoaded(form)) TakeOut(form);
    throw;
  }
}

void FrontEnd::Show(Form& form) {
  Load(form);
  if (IsLoaded(form)) FirstShow(form);
}

void FrontEnd::ShowModal(Form& form, Form& owner) {
  Show(form);
  if (IsLoaded(form)) RunModally(form, owner);
}

void FrontEnd::FirstShow(Form& form) {
  form.Visible = true;
  ShowWindow(form);
  if (!IsLoaded(form) || Contains(activated_, form)) return;
  activated_.push_back(&form);
  form.Form_Resize();
  if (IsLoaded(form)) form.Form_Activate();
  if (IsLoaded(form)) Repaint(form);
}

void FrontEnd::Unload(Form& form) {
  if (!IsLoaded(form) || Contains(unloading_, form)) return;
  struct Mark {
    std::vector<Form*>& forms;
    Form& form;
    ~Mark() { Remove(forms, form); }
  };
  unloading_.push_back(&form);
  const Mark mark{unloading_, form};
  form.Form_Unload();
  TakeOut(form);
}

void FrontEnd::TakeOut(Form& form) {
  form.Visible = false;
  CloseWindow(form);
  Remove(loaded_, form);
  Remove(activated_, form);
}

bool FrontEnd::IsLoaded(const Form& form) const { return Contains(loaded_, form); }

void FrontEnd::SetMousePointer(int pointer) {
  if (pointer == pointer_) return;
  pointer_ = pointer;
  PointerChanged(pointer);
}

}  // namespace tarvo
