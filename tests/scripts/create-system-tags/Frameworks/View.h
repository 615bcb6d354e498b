void View(void);
