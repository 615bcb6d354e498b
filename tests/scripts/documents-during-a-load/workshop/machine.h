void plant_close(void);
void plant_open(void);
void plant_oil(void);
