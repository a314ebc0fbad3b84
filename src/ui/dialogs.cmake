# The dialogs and what they share.
set(QUILLANE_DIALOG_SOURCES
  file_form.cpp file_form.h folder.cpp folder.h form.cpp form.h frmAppliedLoad.h frmController.h
  frmFreedom.h frmImageIndicator.h frmMaterial.h frmOpen.h frmOptimization.cpp frmOptimization.h
  frmSave.h frmShape.h frmValueIndicator.h frmWidth.h)
