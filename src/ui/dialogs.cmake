# The dialogs and what they share.
set(QUILLANE_DIALOG_SOURCES
  course_text.cpp course_text.h file_form.cpp file_form.h file_name.cpp file_name.h folder.cpp
  folder.h form.cpp form.h frmAppliedLoad.h frmController.h frmFreedom.h frmImageIndicator.h
  frmMaterial.h frmOpen.h frmOptimization.cpp frmOptimization.h frmSave.h frmShape.h
  frmValueIndicator.h frmWidth.cpp frmWidth.h)
