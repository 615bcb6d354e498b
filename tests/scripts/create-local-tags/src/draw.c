int draw(void);
