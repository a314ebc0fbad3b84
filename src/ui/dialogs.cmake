# The dialogs and what they share.
set(QUILLANE_DIALOG_SOURCES
  file_form.cpp file_form.h folder.cpp folder.h form.cpp form.h frmAppliedLoad.h frmController.h
  frmImageIndicator.h frmMaterial.h frmOptimization.cpp frmOptimization.h frmWidth.h mode_forms.h)
